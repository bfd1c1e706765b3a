// The names under which cells stand in a file: at most 48 characters, and no two alike, whatever
// the names in memory are.
#pragma once

#include "core/block_arena.h"

// Begins at the front of the web.
void written_names_begin();

// The name of the next live cell in index order: null for its own. Where that is too long it is its
// first 48 characters; where the cell before it has these too, the first 44 and a number that makes
// them different from every other cell's. The string stands until the next call. Takes no blocks.
const char *written_name(CellHandle cell);
