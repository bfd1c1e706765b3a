// What the command line said.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Stands for the whole run: the commands allocate from the arena, which may leave them without
// unwinding, so they keep no strings of their own.
struct CommandLine {
    std::string file;      // the web
    std::string out_file;  // convert: where to
    std::string cell;
    bool force = false;  // new: over an existing file; else: with a web that was not read whole

    bool zero = false;  // list: NUL behind each name

    // set
    bool has_text = false;
    bool has_text_file = false;
    std::string text;
    std::string text_file;

    // report; false or 0 where the web's own option holds
    std::string format;
    std::string selection;
    std::string output;
    uint8_t type = 0;     // ReportType
    uint8_t newline = 0;  // Newline; show, too
    bool has_cell = false;
    bool has_format = false;
    bool has_selection = false;
    bool has_output = false;
    bool all = false;

    // check
    bool json = false;
    std::vector<std::string> files;
};
