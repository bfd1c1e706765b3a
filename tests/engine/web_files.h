// Web files for the engine's tests: read from and written to memory, and files of this process.
#pragma once

#include "tests/support/files.h"

#include <cstdint>
#include <string>

// Reads a web from these bytes the way the document does, views included; web_read()'s result.
int read_web(const std::string &bytes);

// Without the views.
int parse_web(const std::string &bytes);

// What web_write() makes of the web in a file that has room for so many bytes; its result goes to
// *code where one is given.
std::string written_web(int *code = nullptr, size_t room = SIZE_MAX);

// Reads a web, views included, from a file whose reading fails behind its last byte.
int read_web_then_fail(const std::string &bytes);

// A path that no other test uses at the same time; the file goes when the process ends.
std::string scratch_path(const std::string &name);

// A file of one cell: a cname and a text element as they stand.
std::string cell_file(const std::string &name, const std::string &text);
