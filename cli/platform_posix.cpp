#include "cli/platform.h"

#include "web/options.h"

#include <unistd.h>

const uint8_t k_native_newline = k_newline_lf;
const char *const k_standard_input_path = "/dev/stdin";

bool output_is_terminal() {
    return isatty(STDOUT_FILENO) != 0;
}

std::vector<std::string> program_arguments(int argc, char **argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

void standard_streams_binary() {}
