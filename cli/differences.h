// What differs between two states of a web, for a reader.
#pragma once

#include "cli/note.h"

// Prints, cell by cell, what has come, gone and changed: the cell's name, and the lines that differ
// with their numbers behind '-' (before) and '+' (after). Nothing where nothing differs.
void print_differences(const Notes &before, const Notes &after);
