#include "platform/program.h"

#include <unistd.h>

const bool k_native_crlf = false;
const char *const k_standard_input_path = "/dev/stdin";

bool output_is_terminal() {
    return isatty(STDOUT_FILENO) != 0;
}

std::vector<std::string> program_arguments(int argc, char **argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

void standard_streams_binary() {}
