// Runs the built qvx the way a shell does, in a folder of the test's own.
#pragma once

#include "tests/support/files.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

struct Outcome {
    int status;  // exit status, or 128 + the signal that ended it
    std::string out;
    std::string err;
};

struct Circumstances {
    unsigned long file_limit = 0;  // no file may grow over so many bytes: a full disk; 0 is none
    bool as_nobody = false;        // as the user "nobody", where the test runs as root
};

// Runs qvx with these arguments and this standard input.
Outcome run_qvx(const std::vector<std::string> &arguments, const std::string &input = "",
                const Circumstances &in = {});

// What it writes to a terminal, which has room for some 4,000 bytes and turns line feeds into CR
// LF.
std::string qvx_on_terminal(const std::vector<std::string> &arguments);

// Makes an empty folder the current one.
void enter_empty_folder();

// Begins in an empty folder with a file "w.qvx" of these bytes.
class QvxTest : public testing::Test {
protected:
    explicit QvxTest(const std::string &web) {
        enter_empty_folder();
        write_file("w.qvx", web);
    }
};
