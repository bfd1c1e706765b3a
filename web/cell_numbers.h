// Cell numbers: the live cells in name order, by which link entries name their targets. Whoever
// changes which cells there are brings the table in step when he is done.
#pragma once

#include "core/block_arena.h"

constexpr uint32_t k_cell_number_max = 256;  // cells with a number

// Numbers the live cells 0, 1, ... in name order, up to 256 of them.
void cell_numbers_rebuild();

// The number of a cell, or -1.
int32_t cell_number_of(CellHandle cell);

// The cell of a number; 0 for a number outside the table or past the last cell.
CellHandle cell_by_number(int32_t number);
