// Where each field of a node block lies: the index tree's links, then the CellRecord. This file
// alone knows the offsets. No accessor tests its handle, but for is_live_cell().
#pragma once

#include "core/block_arena.h"
#include "core/host_view.h"

enum CellKind : uint16_t {
    k_cell_live = 1,
    k_cell_value_entry = 4,
    k_cell_deleted = 5,
};

// True for a node block that is in use.
inline bool is_node(BlockHandle h) {
    return block_ptr(h)[k_block_type_at] == k_block_node;
}

constexpr uint32_t k_record_at = 8;  // the record lies behind the tree's links

// Declares the getter and the setter of a field of 16 bits, by its offset.
#define BLOCK_FIELD(type, getter, setter, at)                                                      \
    inline type getter(CellHandle node) {                                                          \
        return block_get16(node, at);                                                              \
    }                                                                                              \
    inline void setter(CellHandle node, type value) {                                              \
        block_set16(node, at, value);                                                              \
    }

// clang-format off
BLOCK_FIELD(CellHandle,  node_parent,        node_set_parent,        2)
BLOCK_FIELD(CellHandle,  node_left,          node_set_left,          4)
BLOCK_FIELD(CellHandle,  node_right,         node_set_right,         6)
BLOCK_FIELD(BlockHandle, cell_name,          cell_set_name,          k_record_at + 0)
BLOCK_FIELD(uint16_t,    cell_kind,          cell_set_kind,          k_record_at + 2)   // CellKind
BLOCK_FIELD(BlockHandle, cell_text,          cell_set_text,          k_record_at + 8)   // 0: empty
BLOCK_FIELD(BlockHandle, cell_view_state,    cell_set_view_state,    k_record_at + 10)  // view state or 0
BLOCK_FIELD(BlockHandle, cell_spare_block,   cell_set_spare_block,   k_record_at + 12)  // always 0
BLOCK_FIELD(BlockHandle, cell_out_pointers,  cell_set_out_pointers,  k_record_at + 14)  // 0 outside a report
BLOCK_FIELD(BlockHandle, cell_script,        cell_set_script,        k_record_at + 16)  // 0: none
BLOCK_FIELD(BlockHandle, cell_second_links,  cell_set_second_links,  k_record_at + 18)  // always 0
BLOCK_FIELD(BlockHandle, cell_value,         cell_set_value,         k_record_at + 20)  // 0: none; stale once deleted
// clang-format on

#undef BLOCK_FIELD

// The cell list's token, 32 bits.
inline ListItem cell_list_item(CellHandle cell) {
    return block_get32(cell, k_record_at + 4);
}
inline void cell_set_list_item(CellHandle cell, ListItem item) {
    block_set32(cell, k_record_at + 4, item);
}

// One byte: whether the cell has, or once had, a cell number.
inline bool cell_numbered(CellHandle cell) {
    return block_ptr(cell)[k_record_at + 22] != 0;
}
inline void cell_set_numbered(CellHandle cell, bool numbered) {
    block_ptr(cell)[k_record_at + 22] = numbered ? 1 : 0;
}

// True for a node that is a cell; false for 0.
inline bool is_live_cell(CellHandle node) {
    return node != 0 && cell_kind(node) == k_cell_live;
}
