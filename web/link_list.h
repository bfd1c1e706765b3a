// Link lists: chains of entries with an end entry, in blocks of the arena.
#pragma once

#include "core/block_arena.h"

enum LinkEntryKind : uint8_t {
    k_link_cell = 3,
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

// True when the list names the cell of this number; false for list 0, and for the number -1, which
// any number of cells may have.
bool link_list_names(BlockHandle list, int32_t number);
