// What differs between the systems that qvx runs on, apart from the files behind core/host.h.
#pragma once

#include <string>
#include <vector>

// The arguments after the program's name, in UTF-8.
std::vector<std::string> program_arguments(int argc, char **argv);

// Makes the standard streams carry bytes as they are.
void standard_streams_binary();
