// The web's cells: making, finding and deleting them, and the web as a whole.
//
// A cell is a node of the index (web/index.h) whose fields web/record.h has. A node owns its name
// and, through its record, everything the cell has. Deleting a cell releases its fields and leaves
// the node with kind k_cell_deleted, so that the name can be revived in place; nodes go only with
// the whole web.
#pragma once

#include "core/block_arena.h"
#include "web/index.h"

// The live cell of that name, or 0.
CellHandle cell_lookup(const char *name);

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
