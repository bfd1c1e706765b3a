// Cells and the cell index: an unbalanced binary search tree of node blocks in folded-name order.
//
// A node owns its name and, through its record, everything the cell has. Deleting a cell releases
// its fields and leaves the node with kind k_cell_deleted, so that the name can be revived in
// place; nodes go only with the whole web.
#pragma once

#include "core/block_arena.h"
#include "core/names.h"
#include "web/record.h"

enum CellKind : uint16_t {
    k_cell_live = 1,
    k_cell_value_entry = 4,
    k_cell_deleted = 5,
};

// True for a node that is a cell; false for 0.
inline bool is_live_cell(CellHandle node) {
    return node != 0 && cell_kind(node) == k_cell_live;
}

// ---- Index --------------------------------------------------------------------------------------
// Each takes the root (or its address), so that the same code serves any tree.

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

// Links n nodes into a tree of their own and returns its root. `first` is the first of them in the
// order of their names, no two of which are equal; each node's right child is the next one. The
// middle of each run is above both halves.
CellHandle index_balanced(CellHandle first, uint32_t n);

// Hangs `node` into the tree where `old` hangs, which is then outside.
void index_replace(CellHandle old, CellHandle node, CellHandle *root);

// Turns the tree until the node is its root.
void index_raise(CellHandle node, CellHandle *root);

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

// ---- The web's cells ----------------------------------------------------------------------------

// Root of the web's index: the home cell, or 0 while there is no web.
CellHandle index_root();
CellHandle *index_root_address();

// The live cell of that name, or 0.
CellHandle cell_lookup(const char *name);
CellHandle cell_lookup_in(CellHandle root, const char *name);

// First live cell at or after (before) the node in index order; 0 when there is none.
CellHandle live_from(CellHandle node);
CellHandle live_back_from(CellHandle node);

// Makes an empty cell of exactly that name, or revives the deleted one; 0 when a live cell has it.
// The cell numbers are rebuilt.
CellHandle cell_create(CellHandle *root, const char *name);

// Deletes a cell: the trail forgets it, its fields go, its node stays. When it is the current cell
// the previous one becomes current first, without storing the pane. 0 does nothing.
void cell_delete(CellHandle cell);

// Gives back what the record of a node owns, by its kind; the name stays.
void cell_release_fields(CellHandle node);

// The name as a string in one static buffer, which the next call overwrites. "BAD_CELL_HANDLE" for
// 0; for a node that is no cell the buffer stays as it was.
const char *cell_name_string(CellHandle cell);

// Releases the whole web, names included, and resets the trail.
void web_clear();

// Replaces the web by one empty cell of that name, current, with default options. The views are not
// refreshed.
void web_reset(const char *cellname);

// ---- Changed flag -------------------------------------------------------------------------------

bool web_changed();
void set_web_changed(bool changed);
