// Runs the built qvx the way a shell does, in a folder of the test's own.
#pragma once

#include "tests/support/files.h"

#include <string>
#include <vector>

struct Outcome {
    int status;  // exit status, or 128 + the signal that ended it
    std::string out;
    std::string err;
};

// Runs qvx with these arguments and this standard input. No file may grow over `file_limit` bytes,
// where that is given: what a full disk looks like.
Outcome run_qvx(const std::vector<std::string> &arguments, const std::string &input = "",
                long file_limit = 0);

// The same as the user "nobody", where the test runs as root; else as whoever runs it.
Outcome run_qvx_as_nobody(const std::vector<std::string> &arguments);

// Starts qvx, lets it run so long and kills it.
void run_and_kill_qvx(const std::vector<std::string> &arguments, unsigned microseconds);

// The same with a terminal for standard output, which has room for some 4,000 bytes and turns line
// feeds into CR LF.
Outcome run_qvx_on_terminal(const std::vector<std::string> &arguments);

// Makes an empty folder the current one.
void enter_empty_folder();
