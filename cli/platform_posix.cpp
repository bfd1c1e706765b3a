#include "cli/platform.h"

std::vector<std::string> program_arguments(int argc, char **argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

void standard_streams_binary() {}
