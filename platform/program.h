// What a console program asks of the system: its arguments and its standard streams.
#pragma once

#include <string>
#include <vector>

// The arguments after the program's name, in UTF-8.
std::vector<std::string> program_arguments(int argc, char **argv);

// True where this system's programs expect lines to end with CR LF, not LF alone.
extern const bool k_native_crlf;

// A path of what standard input comes from; "" where the system has none.
extern const char *const k_standard_input_path;

// True when standard output is shown on a terminal.
bool output_is_terminal();

// Makes the standard streams carry bytes as they are.
void standard_streams_binary();
