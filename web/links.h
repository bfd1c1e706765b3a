// Links: which cells a text names. Lists are built for a report and dropped when it ends; what is
// always in step is the cell number table, by which list entries name their targets.
#pragma once

#include "core/block_arena.h"
#include "web/words.h"

constexpr uint32_t k_cell_number_max = 256;    // cells with a number
constexpr uint32_t k_scanned_text_max = 4095;  // characters of a text that links and reports see
constexpr uint32_t k_selection_max = 64;       // cells of a report selection

// ---- Cell numbers -------------------------------------------------------------------------------

// Numbers the live cells 0, 1, ... in name order, up to 256 of them.
void cell_numbers_rebuild();

// The number of a cell, or -1.
int32_t cell_number_of(CellHandle cell);

// The cell of a number; 0 for a number outside the table or past the last cell.
CellHandle cell_by_number(int32_t number);

// ---- Link lists ---------------------------------------------------------------------------------

enum LinkEntryKind : uint8_t {
    k_link_none = 0,
    k_link_cell = 3,
    k_link_chain_a = 5,  // 5 and 6 own a chain of text blocks; nothing makes them
    k_link_chain_b = 6,
    k_link_end = 30,
};

// Four bytes within an entry block.
struct LinkEntry {
    uint8_t kind;
    uint8_t zero;
    uint8_t target[2];  // cell number, signed little-endian; -1 for a cell without a number
};
static_assert(sizeof(LinkEntry) == 4);

int32_t link_target(const LinkEntry *entry);
void link_set_target(LinkEntry *entry, int32_t number);

BlockHandle link_list_new(uint8_t kind, CellHandle owner);

// A fresh zero entry at the end, for the caller to fill.
LinkEntry *link_list_append(BlockHandle list);

// Iteration by the list's own cursor. Null at the end of the last block and for list 0; readers
// stop at the end entry, behind which zero entries may follow.
LinkEntry *link_list_first(BlockHandle list);
LinkEntry *link_list_next(BlockHandle list);

void link_list_free(BlockHandle list);

// ---- Building and dropping ----------------------------------------------------------------------

// A list of the cells that the text names, or 0 for an empty text.
BlockHandle links_scan_text(BlockHandle text, CellHandle owner);

// A node that is no live cell is left alone.
void links_build(CellHandle cell);
void links_drop(CellHandle cell);
void links_build_all();
void links_drop_all();
void links_build_selection();
void links_drop_selection();

// True when the list names the cell of this number; false for list 0, and for the number -1, which
// any number of cells may have.
bool link_list_names(BlockHandle list, int32_t number);

// Gives back the list being built and every list that was built. Part of recovery.
void links_recover();

// ---- Report selection ---------------------------------------------------------------------------
// The cells whose names the user selected, in the order in which they were selected.

// Replaces the selection by the live cells that the words of the text name, at most 64.
void report_selection_build(const char *text);
uint32_t report_selection_count();
CellHandle report_selection_at(uint32_t i);
