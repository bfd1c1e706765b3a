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

    // set, append, script
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

    // rename, find, replace, links and what is made of them
    std::string wanted;                    // find, replace: what is looked for
    std::string replacement;               // replace: what comes in its place; rename: the new name
    std::string other_cell;                // path: where it ends
    std::optional<std::string> some_cell;  // links, graph: of one cell
    int32_t depth = 1;                     // graph: links away from it
    uint8_t graph_format = 0;              // GraphFormat (cli/links/graph.h)
    bool with_links = false;               // rename
    bool whole_words = false;
    bool match_case = false;
    bool expression = false;
    bool in_names = false;
    bool only_cells = false;
    bool only_counts = false;
    // diff and merge: `file` is the one in the middle, ours
    std::string base_file;
    std::string other_file;
    std::optional<std::string> our_label;
    std::optional<std::string> their_label;
    std::optional<std::string> shown_name;  // in place of the output's in messages
    // show, cat, rm
    std::vector<std::string> cells;

    // append; option and value: what is set
    std::optional<std::string> more_text;  // "-" for standard input
    std::optional<std::string> name;       // of an option
    std::optional<std::string> value;
    // export and import
    std::optional<std::string> html;             // where the page goes
    std::optional<std::string> markdown_folder;  // where the files go
    bool from_markdown = false;
    bool from_text = false;
    bool from_tsv = false;
};
