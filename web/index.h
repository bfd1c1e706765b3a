// The cell index: an unbalanced binary search tree of node blocks in folded-name order, and the
// root of the web's own.
//
// Functions that take the root (or its address) serve any tree.
#pragma once

#include "web/record.h"

// The node of that name, of any kind, or 0.
CellHandle index_find(CellHandle root, const char *name);
CellHandle index_find_text(CellHandle root, BlockHandle name);

// Adds a node for the name, which it takes over. An equal name goes to the right.
CellHandle index_insert(BlockHandle name, CellHandle *root, uint16_t kind);

// Hangs a finished node, whose name is set, into the tree; allocates nothing. An equal name goes to
// the right.
void index_link(CellHandle node, CellHandle *root);

// The same, unless the tree has a node of that name: then that one is returned and nothing done.
// Returns 0 when the node was hung in.
CellHandle index_link_new(CellHandle node, CellHandle *root);

// A new node of that name, or the deleted one revived; 0 when the name is taken.
CellHandle index_find_or_insert(const char *name, CellHandle *root, uint16_t kind);

// Leftmost (rightmost) node below and including this one; 0 for 0.
CellHandle index_first(CellHandle node);
CellHandle index_last(CellHandle node);

// In-order neighbours; 0 past either end, and for 0.
CellHandle index_next(CellHandle node);
CellHandle index_prev(CellHandle node);

// Runs the function on every node, children first; the function may release its node. Needs no
// stack that grows with the tree.
void index_walk(CellHandle root, void (*function)(CellHandle node));

// ---- The web's index ----------------------------------------------------------------------------

// Root of the web's index: the home cell, or 0 while there is no web.
CellHandle index_root();
CellHandle *index_root_address();

// The web's live cells in index order; 0 past either end.
CellHandle first_live_cell();
CellHandle last_live_cell();
CellHandle next_live_cell(CellHandle cell);

// Gives back a node that is in no tree, and its name. What its record owns must have gone.
void node_free(CellHandle node);
