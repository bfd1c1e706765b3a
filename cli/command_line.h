// What the command line said. It stands for the whole run.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct CommandLine {
    std::string file;                // the web
    std::vector<std::string> files;  // the webs, of a command that only reads
    std::string out_file;            // convert: where to
    std::string cell;
    bool force = false;    // new: over an existing file; else: with a web that was not read whole
    bool dry_run = false;  // says what would change, and writes nothing
    bool zero = false;     // NUL behind each name
    bool json = false;

    // set
    std::optional<std::string> text;
    std::optional<std::string> text_file;

    // report; none or 0 where the web's own option holds
    std::optional<std::string> format;
    std::optional<std::string> selection;
    std::optional<std::string> output;
    std::optional<std::string> report_cell;
    uint8_t type = 0;     // ReportType
    uint8_t newline = 0;  // Newline; show, too
    bool all = false;

    // export and import
    std::optional<std::string> html;             // where the page goes
    std::optional<std::string> markdown_folder;  // where the files go
    bool from_markdown = false;
    bool from_text = false;
    bool from_tsv = false;
};
