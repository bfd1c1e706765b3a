// The cell list: an item for each live cell, as the engine says, of which those are shown whose
// names hold what the user has typed. An item's token is its cell's handle.
#pragma once

#include "core/block_arena.h"

#include <cstddef>
#include <string>
#include <vector>

void list_fill();
void list_add(CellHandle cell);
void list_clear();
void list_remove(CellHandle cell);

// The items that are shown, in the web's order.
const std::vector<CellHandle> &list_shown();

// What names must hold; "" for all. Of those shown, the first whose name begins with it is chosen.
void list_set_filter(std::string filter);
const std::string &list_filter();

// The item that is chosen, by its place among those shown; 0 when none is shown.
size_t list_chosen();
void list_choose(size_t item);
void list_choose_cell(CellHandle cell);

// Columns of the longest name.
int list_columns();
