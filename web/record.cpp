// Where each field of a node block lies. This file alone knows the offsets.
#include "web/cells.h"

namespace {

constexpr uint32_t k_parent_at = 2;
constexpr uint32_t k_left_at = 4;
constexpr uint32_t k_right_at = 6;

// The record begins behind the tree's links.
constexpr uint32_t k_record_at = 8;
constexpr uint32_t k_name_at = k_record_at + 0;
constexpr uint32_t k_kind_at = k_record_at + 2;
constexpr uint32_t k_list_item_at = k_record_at + 4;
constexpr uint32_t k_text_at = k_record_at + 8;
constexpr uint32_t k_first_aux_at = k_record_at + 10;
constexpr uint32_t k_second_aux_at = k_record_at + 12;
constexpr uint32_t k_out_pointers_at = k_record_at + 14;
constexpr uint32_t k_script_at = k_record_at + 16;
constexpr uint32_t k_second_links_at = k_record_at + 18;
constexpr uint32_t k_value_at = k_record_at + 20;
constexpr uint32_t k_numbered_at = k_record_at + 22;

}  // namespace

CellHandle node_parent(CellHandle node) {
    return block_get16(node, k_parent_at);
}
CellHandle node_left(CellHandle node) {
    return block_get16(node, k_left_at);
}
CellHandle node_right(CellHandle node) {
    return block_get16(node, k_right_at);
}

void node_set_parent(CellHandle node, CellHandle parent) {
    block_set16(node, k_parent_at, parent);
}
void node_set_left(CellHandle node, CellHandle left) {
    block_set16(node, k_left_at, left);
}
void node_set_right(CellHandle node, CellHandle right) {
    block_set16(node, k_right_at, right);
}

BlockHandle cell_name(CellHandle cell) {
    return block_get16(cell, k_name_at);
}
uint16_t cell_kind(CellHandle cell) {
    return block_get16(cell, k_kind_at);
}
ListItem cell_list_item(CellHandle cell) {
    return block_get32(cell, k_list_item_at);
}
BlockHandle cell_text(CellHandle cell) {
    return block_get16(cell, k_text_at);
}
BlockHandle cell_first_aux(CellHandle cell) {
    return block_get16(cell, k_first_aux_at);
}
BlockHandle cell_second_aux(CellHandle cell) {
    return block_get16(cell, k_second_aux_at);
}
BlockHandle cell_out_pointers(CellHandle cell) {
    return block_get16(cell, k_out_pointers_at);
}
BlockHandle cell_script(CellHandle cell) {
    return block_get16(cell, k_script_at);
}
BlockHandle cell_second_links(CellHandle cell) {
    return block_get16(cell, k_second_links_at);
}
BlockHandle cell_value(CellHandle cell) {
    return block_get16(cell, k_value_at);
}
bool cell_numbered(CellHandle cell) {
    return block_ptr(cell)[k_numbered_at] != 0;
}

void cell_set_name(CellHandle cell, BlockHandle name) {
    block_set16(cell, k_name_at, name);
}
void cell_set_kind(CellHandle cell, uint16_t kind) {
    block_set16(cell, k_kind_at, kind);
}
void cell_set_list_item(CellHandle cell, ListItem item) {
    block_set32(cell, k_list_item_at, item);
}
void cell_set_text(CellHandle cell, BlockHandle text) {
    block_set16(cell, k_text_at, text);
}
void cell_set_first_aux(CellHandle cell, BlockHandle block) {
    block_set16(cell, k_first_aux_at, block);
}
void cell_set_second_aux(CellHandle cell, BlockHandle block) {
    block_set16(cell, k_second_aux_at, block);
}
void cell_set_out_pointers(CellHandle cell, BlockHandle list) {
    block_set16(cell, k_out_pointers_at, list);
}
void cell_set_script(CellHandle cell, BlockHandle script) {
    block_set16(cell, k_script_at, script);
}
void cell_set_second_links(CellHandle cell, BlockHandle list) {
    block_set16(cell, k_second_links_at, list);
}
void cell_set_value(CellHandle cell, BlockHandle value) {
    block_set16(cell, k_value_at, value);
}
void cell_set_numbered(CellHandle cell, bool numbered) {
    block_ptr(cell)[k_numbered_at] = numbered ? 1 : 0;
}

bool is_live_cell(CellHandle node) {
    return node != 0 && cell_kind(node) == k_cell_live;
}
