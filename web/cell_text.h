// What the text pane and the cell records hand each other: the text, and where the user was in it.
#pragma once

#include "core/block_arena.h"

// Where the user left a cell's text; positions in bytes, lines from 0.
struct ViewState {
    int32_t first_line;
    int32_t selection_start;
    int32_t selection_end;
};

// Replaces the cell's text by n bytes (none of them 0; n = 0 for no text) and drops its out pointer
// list. The old text's blocks serve again. When the blocks run out all the same the cell keeps its
// old text and the call leaves through the recovery point.
void cell_replace_text(CellHandle cell, const char *bytes, uint32_t n);

// True when cell_replace_text() would find room.
bool cell_text_fits(CellHandle cell, uint32_t n);

// Keeps the view state in the cell; dropped silently when the cell has none yet and no block is
// free.
void cell_store_view(CellHandle cell, const ViewState *view);

// The stored view state, or zeros. Makes the record if there is a block for it.
ViewState cell_view(CellHandle cell);
