// What differs between two states of a web, for a reader.
#pragma once

#include "cli/note.h"

#include <string_view>
#include <vector>

// A line that stands on one side only. What it is a line of and its bytes are pieces of the notes.
struct LineDifference {
    const char *field;  // "text", "script" or "value"
    bool added;
    size_t line;  // on its side, from 1
    std::string_view text;
};

// A cell that has come, gone or changed; the side that lacks it is null.
struct CellDifference {
    const Note *before;
    const Note *after;
    std::vector<LineDifference> lines;
};

// In the web's order; nothing where nothing differs.
std::vector<CellDifference> differences_between(const Notes &before, const Notes &after);

// Prints, cell by cell, what has come, gone and changed: the cell's name, behind '+' or '-' when it
// is new or gone, and the lines that differ with their numbers behind '-' (before) and '+' (after).
// Nothing where nothing differs.
void print_differences(const Notes &before, const Notes &after);
