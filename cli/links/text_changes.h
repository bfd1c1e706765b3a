// Texts changed line by line, for rename and replace, and what was changed shown to look at before
// it happens.
#pragma once

#include "cli/command_line.h"
#include "cli/links/spans.h"
#include "cli/note.h"

#include <functional>

// Finds the pieces of a line that are to be replaced.
using PieceFinder = std::function<void(std::string_view line, Spans *pieces)>;

struct ChangedLine {
    std::string cell;
    size_t line;  // from 1
    std::string before;
    std::string after;
    Spans pieces;  // of `before`
};
using ChangedLines = std::vector<ChangedLine>;

// Replaces the pieces in every text. Says which lines were changed.
ChangedLines replace_in_texts(Notes *notes, const PieceFinder &finder,
                              const std::string &replacement);

// Prints each line before and after, in the form of print_differences() (cli/differences.h), but
// each hit by itself and marked; or as JSON. `cell` is the one that a heading stands above already.
void print_changed(const CommandLine &line, const ChangedLines &changed,
                   std::string_view cell = {});
