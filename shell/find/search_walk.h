// Where a search goes when the text in the pane holds no further match: through the other cells in
// the order of the index, from the last to the first, back to the one where it began. Knows no
// window; the pane alone says what matches.
#pragma once

#include "core/block_arena.h"

// Whether the pane may find `target` in these bytes. Exact when case matters; otherwise letters
// beyond ASCII may have any number of forms, so that only texts of ASCII alone are ruled out.
bool may_hold(const char *text, uint32_t length, const char *target, bool match_case);

// The next live cell after `cell`, wrapping, whose text may hold the target; `start` when there is
// none before it, whatever it holds.
CellHandle next_cell_to_search(CellHandle cell, CellHandle start, const char *target,
                               bool match_case);
