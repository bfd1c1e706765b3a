// What writing a web would do to a file, for --dry-run.
#pragma once

#include <string>

// Prints how the web at hand differs from the one in the file, or from none; the web at hand is
// that of the file afterwards.
void print_what_writing_changes(const std::string &target);
