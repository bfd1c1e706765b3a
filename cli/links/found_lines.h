// Lines that a command has found, printed as [FILE:]CELL:LINE:TEXT or as JSON.
#pragma once

#include "cli/command_line.h"
#include "cli/links/spans.h"

#include <nlohmann/json_fwd.hpp>

#include <string_view>

// The file, where names of several are to be told apart; else "".
std::string_view file_shown(const CommandLine &line, std::string_view file);

// True where names are asked for, not lines.
bool prints_cells_alone(const CommandLine &line);

// "FILE:" when there is a file to show.
void print_file(std::string_view file);

struct FoundLine {
    std::string_view file;  // or ""
    std::string_view cell;
    size_t line;            // from 1
    std::string_view text;  // of the line
};

// With what was found in the line coloured.
void print_found(const FoundLine &found, const Spans &spans);

// The line alone.
void print_marked(std::string_view text, const Spans &spans);

// One name of a list: as [FILE:]NAME with its line end or NUL, or {"file": ..., "cell": ...}.
void print_listed(const CommandLine &line, std::string_view file, std::string_view name);

// [FILE:]NAME:COUNT, or {"file": ..., KEY: NAME, "count": ...}.
void print_counted(const CommandLine &line, std::string_view file, const char *key,
                   std::string_view name, size_t count);
