#include "web/link_list.h"

#include "core/check.h"

#include <bit>
#include <cstring>

namespace {

// Header block.
constexpr uint32_t k_list_kind_at = 6;
constexpr uint32_t k_first_block_at = 7;
constexpr uint32_t k_first_index_at = 9;
constexpr uint32_t k_last_block_at = 10;
constexpr uint32_t k_last_index_at = 12;
constexpr uint32_t k_cursor_block_at = 13;
constexpr uint32_t k_cursor_index_at = 15;
constexpr uint32_t k_steps_at = 16;
constexpr uint32_t k_owner_at = 18;

// Entry block: linked both ways, eight entries.
constexpr uint32_t k_previous_at = 4;
constexpr uint32_t k_entries_at = 6;
constexpr uint32_t k_entries = 8;

bool is_list(BlockHandle h) {
    return block_ptr(h)[k_block_type_at] == k_block_link;
}

uint8_t byte_at(BlockHandle h, uint32_t at) {
    return block_ptr(h)[at];
}

void set_byte(BlockHandle h, uint32_t at, uint32_t value) {
    block_ptr(h)[at] = static_cast<uint8_t>(value);
}

LinkEntry *entry_at(BlockHandle block, uint32_t index) {
    return reinterpret_cast<LinkEntry *>(block_ptr(block) + k_entries_at +
                                         index * sizeof(LinkEntry));
}

// Puts an empty entry block behind the last one of the list.
LinkEntry *append_block(BlockHandle list) {
    const BlockHandle block = block_alloc(k_block_link);
    const BlockHandle last = block_get16(list, k_last_block_at);
    if (last == 0) {
        block_set16(list, k_first_block_at, block);
        set_byte(list, k_first_index_at, 0);
    } else {
        block_set_next(last, block);
        block_set16(block, k_previous_at, last);
    }
    block_set16(list, k_last_block_at, block);
    set_byte(list, k_last_index_at, 0);
    block_set16(list, k_steps_at, 0);
    return entry_at(block, 0);
}

}  // namespace

int32_t link_target(const LinkEntry *entry) {
    return static_cast<int16_t>(entry->target[0] | entry->target[1] << 8);
}

void link_set_target(LinkEntry *entry, int32_t number) {
    entry->target[0] = static_cast<uint8_t>(number);
    entry->target[1] = static_cast<uint8_t>(number >> 8);
}

BlockHandle link_list_new(uint8_t kind, CellHandle owner) {
    const BlockHandle list = block_alloc(k_block_link);
    set_byte(list, k_list_kind_at, kind);
    block_set16(list, k_owner_at, owner);
    return list;
}

LinkEntry *link_list_append(BlockHandle list) {
    CHECK(is_list(list));
    const BlockHandle last = block_get16(list, k_last_block_at);
    const uint32_t index = byte_at(list, k_last_index_at) + 1U;
    if (last == 0 || index >= k_entries) {
        return append_block(list);
    }
    set_byte(list, k_last_index_at, index);
    return entry_at(last, index);
}

LinkEntry *link_list_first(BlockHandle list) {
    if (list == 0) {
        return nullptr;
    }
    CHECK(is_list(list));
    const BlockHandle block = block_get16(list, k_first_block_at);
    const uint32_t index = byte_at(list, k_first_index_at);
    block_set16(list, k_cursor_block_at, block);
    set_byte(list, k_cursor_index_at, index);
    block_set16(list, k_steps_at, 0);
    return block != 0 ? entry_at(block, index) : nullptr;
}

LinkEntry *link_list_next(BlockHandle list) {
    CHECK(list == 0 || is_list(list));
    if (list == 0 || block_get16(list, k_first_block_at) == 0) {
        return nullptr;
    }
    BlockHandle block = block_get16(list, k_cursor_block_at);
    if (block == 0) {
        return nullptr;
    }
    uint32_t index = byte_at(list, k_cursor_index_at) + 1U;
    if (index >= k_entries) {
        block = block_next(block);
        block_set16(list, k_cursor_block_at, block);
        if (block == 0) {
            return nullptr;
        }
        index = 0;
    }
    set_byte(list, k_cursor_index_at, index);
    block_set16(list, k_steps_at, static_cast<uint16_t>(block_get16(list, k_steps_at) + 1));
    return entry_at(block, index);
}

void link_list_free(BlockHandle list) {
    if (list == 0) {
        return;
    }
    CHECK(is_list(list));
    chain_free(block_get16(list, k_first_block_at));
    block_free(list);
}

// Reports of in pointers ask this of every list for every cell: the entries of a block are compared
// all at once, without the list's cursor. Behind the end entry there are none of this kind.
bool link_list_names(BlockHandle list, int32_t number) {
    if (list == 0 || number < 0) {
        return false;
    }
    using Entries = uint32_t __attribute__((vector_size(16)));
    static_assert(2 * sizeof(Entries) == k_entries * sizeof(LinkEntry));
    LinkEntry entry = {k_link_cell, 0, {}};
    link_set_target(&entry, number);
    auto wanted = std::bit_cast<uint32_t>(entry);
    for (BlockHandle h = block_get16(list, k_first_block_at); h != 0; h = block_next(h)) {
        Entries entries[2];
        memcpy(entries, block_ptr(h) + k_entries_at, sizeof entries);
        auto equal = (entries[0] == wanted) | (entries[1] == wanted);
        uint64_t halves[2];
        memcpy(halves, &equal, sizeof halves);
        if ((halves[0] | halves[1]) != 0) {
            return true;
        }
    }
    return false;
}
