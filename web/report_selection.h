// The report selection: the cells whose names the user selected, in the order in which they were
// selected.
#pragma once

#include "core/block_arena.h"

constexpr uint32_t k_selection_max = 64;  // cells of a report selection

// Replaces the selection by the live cells that the words of the text name, at most 64.
void report_selection_build(const char *text);
uint32_t report_selection_count();
CellHandle report_selection_at(uint32_t i);
