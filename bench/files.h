// Files of the benchmarks.
#pragma once

#include <cstdio>
#include <string>

// Where saved bytes go: what is measured is the program, not a disk.
constexpr const char *k_sink = "/dev/null";

FILE *open_or_exit(const char *path, const char *mode);

// A web's bytes as one XML document. A web has no root element but ends in "</eof>": an "<eof>" in
// front of it makes the whole of it one.
std::string read_as_xml(const char *path);
