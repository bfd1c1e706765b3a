// The operations by which the user moves through the web and changes its set of cells.
//
// Every operation that takes a name accepts null or "" for "ask the user". A name given is
// normalised first; one that is no cellname is answered with a warning. While output is under way
// each operation is refused (core/busy.h). An operation that runs out of blocks leaves the web as
// it was.
#pragma once

#include "core/block_arena.h"

// Go to a cell; the trail remembers the one left. Nothing happens for the current cell, and for a
// handle of no live cell. Returns the cell that is current afterwards.
CellHandle go_to_cell(CellHandle cell);

// The same where the user took the way by name: what was stepped back from is forgotten.
void go_to_link(CellHandle cell);

// Go to the cell of that name, or create it (asking first when the user wants to be asked).
// Creating it here does not make the web count as changed.
void go_to_name(const char *name);

// Create a cell, or go to the one that exists if the user agrees. 0 when nothing was done.
CellHandle new_cell(const char *name);

// Copy the current cell's text, script and value into a new cell. 0 when nothing was done.
CellHandle clone_cell(const char *name);

// Delete the current cell, after asking. The home cell is refused.
void delete_cell();

// Neighbours in index order, wrapping at the ends.
void previous_cell();
void next_cell();

void first_cell();
void last_cell();
void go_home();

// Along the trail. back() with an empty trail goes home.
void back();
void forward();

// Back to the newest trail entry of exactly that name, leaving the entries passed on the forward
// ring; "home" is always found.
void jump_to_trail_entry(const char *name);

// The same by cell; the home cell is always found, a cell that is not on the trail never.
void jump_to_trail_cell(CellHandle cell);

// Gives back what an operation had made when the blocks ran out. Part of recovery.
void cell_ops_recover();
