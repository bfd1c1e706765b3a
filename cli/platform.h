// What differs between the systems that qvx runs on, apart from the files behind core/host.h.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The arguments after the program's name, in UTF-8.
std::vector<std::string> program_arguments(int argc, char **argv);

// The line ends that this system's programs expect (Newline of web/options.h).
extern const uint8_t k_native_newline;

// A path of what standard input comes from; "" where the system has none.
extern const char *const k_standard_input_path;

// True when standard output is shown on a terminal.
bool output_is_terminal();

// Makes the standard streams carry bytes as they are.
void standard_streams_binary();
