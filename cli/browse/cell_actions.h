// The engine's operations on cells (web/cell_ops.h, report/reports.h), as keys call them: each runs
// under a recovery point of its own, and the text of the cell that is current then is on the
// screen.
#pragma once

#include "core/block_arena.h"

// As a link in a text is followed, and as the list opens a cell: the latter forgets nothing that
// was stepped back from.
void cell_follow(CellHandle cell);
void cell_open(CellHandle cell);

void cell_back();
void cell_forward();
void cell_home();
void cell_previous();
void cell_next();
void cell_first();
void cell_last();

// Asks for the name.
void cell_go_to_name();
void cell_new();

void cell_delete_current();

// In the user's editor. A text that has not changed is not stored.
void cell_edit();

// Reports on the current cell, into the console.
void cell_in_pointers();
void cell_out_pointers_of();
void cell_trail();

// Has the list choose the current cell.
void cell_choose_current();
