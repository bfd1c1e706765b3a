// The trail (where the user has been), the forward ring (what was stepped back from) and the
// current cell. Each ring remembers 31 cells and forgets the oldest.
#pragma once

#include "core/block_arena.h"

// Empties both rings, makes the home cell current (without showing it) and fills the cell list
// anew.
void trail_reset();

void trail_push(CellHandle cell);

// Takes the newest entry off, after putting the current cell on the forward ring; 0 when empty.
CellHandle trail_pop();

// From the newest entry to the oldest, then 0. One walk at a time.
void trail_walk_start();
CellHandle trail_walk_next();

// Removes every occurrence of a cell.
void trail_forget(CellHandle cell);

void forward_push(CellHandle cell);
CellHandle forward_pop();
void forward_forget(CellHandle cell);
void forward_clear();

CellHandle current_cell();

// Makes a cell current and shows it. The pane's text is first stored into the cell left behind.
void set_current(CellHandle cell);

// The same without storing: the pane's text has been stored, or is about to go.
void set_current_unstored(CellHandle cell);

// set_current(), and selects the cell in the cell list.
void set_current_and_select(CellHandle cell);

// Makes a cell current, or none (0), without storing or showing anything.
void current_cell_reset(CellHandle cell);

// The node from which previous_cell() and next_cell() step while there is no current cell.
CellHandle list_position();
void list_position_set(CellHandle node);

// Stores the pane into the current cell; the web changed flag keeps its value. Allocates.
void store_current_text();

// ---- For tests ----------------------------------------------------------------------------------
// Entries of a ring from the oldest to the newest; returns their number. `out` holds 31 handles.
uint32_t trail_entries(CellHandle *out);
uint32_t forward_entries(CellHandle *out);
