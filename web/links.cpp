#include "web/links.h"

#include "core/check.h"
#include "core/text.h"
#include "web/cells.h"
#include "web/words.h"

#include <algorithm>
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
constexpr uint8_t k_out_pointer_list = 1;

// Entry block: linked both ways, eight entries.
constexpr uint32_t k_previous_at = 4;
constexpr uint32_t k_entries_at = 6;
constexpr uint32_t k_entries = 8;

constexpr uint32_t k_name_marks = 16384;  // a power of two

static struct Links {
    BlockHandle under_construction;  // the list being built; recovery gives it back
    char text[k_scanned_text_max + sizeof(uint32_t)];

    // While all lists are built: a mark for every name, by its hash, so that most words that name
    // nothing need no search.
    bool names_marked;
    uint8_t marks[k_name_marks / 8];
} links;

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
    BlockHandle block = block_alloc(k_block_link);
    BlockHandle last = block_get16(list, k_last_block_at);
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

// An entry of kind 5 or 6 owns a chain of text blocks that each own a text.
void free_entry_chain(const LinkEntry *entry) {
    BlockHandle h = static_cast<BlockHandle>(entry->target[0] | entry->target[1] << 8);
    while (h != 0) {
        BlockHandle next = block_next(h);
        chain_free(block_get16(h, k_block_payload_at));
        block_free(h);
        h = next;
    }
}

void append_link(BlockHandle list, CellHandle cell) {
    LinkEntry *entry = link_list_append(list);
    entry->kind = k_link_cell;
    link_set_target(entry, cell_number_of(cell));
}

// Of a word's length and its first characters, four of which can be read there. The same for all
// spellings that the index takes for one, when blanks are underscores.
uint32_t name_hash(const char *name, uint32_t length) {
    uint32_t first;
    memcpy(&first, name, sizeof first);
    uint32_t kept = length < sizeof first ? (1U << length * 8) - 1 : UINT32_MAX;
    return ((first & kept & 0xDFDFDFDF) + length) * 0x9E3779B1 >> 18;
}
static_assert(k_name_marks == 1U << (32 - 18));

void mark_name(CellHandle cell) {
    uint32_t length = text_copy_out(links.text, cell_name(cell), k_scanned_text_max);
    std::replace(links.text, links.text + length, ' ', '_');
    uint32_t hash = name_hash(links.text, length);
    links.marks[hash / 8] |= static_cast<uint8_t>(1U << hash % 8);
}

bool may_be_name(const char *word, uint32_t length) {
    uint32_t hash = name_hash(word, length);
    return !links.names_marked || (links.marks[hash / 8] >> hash % 8 & 1) != 0;
}

// The live cell that a word names. The word ends in the middle of a text: the character behind it
// gives way to a terminator for the time of the search.
CellHandle lookup_word(char *word, uint32_t length) {
    if (!may_be_name(word, length)) {
        return 0;
    }
    char behind = word[length];
    word[length] = 0;
    CellHandle cell = cell_lookup(word);
    word[length] = behind;
    return cell;
}

void for_all_live(void (*function)(CellHandle cell)) {
    for (CellHandle c = live_from(index_first(index_root())); c != 0;
         c = live_from(index_next(c))) {
        function(c);
    }
}

void for_selection(void (*function)(CellHandle cell)) {
    for (uint32_t i = 0; i < report_selection_count(); ++i) {
        function(report_selection_at(i));
    }
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
    BlockHandle list = block_alloc(k_block_link);
    set_byte(list, k_list_kind_at, kind);
    block_set16(list, k_owner_at, owner);
    return list;
}

LinkEntry *link_list_append(BlockHandle list) {
    CHECK(is_list(list));
    BlockHandle last = block_get16(list, k_last_block_at);
    uint32_t index = byte_at(list, k_last_index_at) + 1U;
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
    BlockHandle block = block_get16(list, k_first_block_at);
    uint32_t index = byte_at(list, k_first_index_at);
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
    for (LinkEntry *e = link_list_first(list); e != nullptr; e = link_list_next(list)) {
        if (e->kind == k_link_chain_a || e->kind == k_link_chain_b) {
            free_entry_chain(e);
        }
    }
    chain_free(block_get16(list, k_first_block_at));
    block_free(list);
}

BlockHandle links_scan_text(BlockHandle text, CellHandle owner) {
    if (text_size(text) == 0) {
        return 0;
    }
    text_copy_out(links.text, text, k_scanned_text_max);
    CHECK(links.under_construction == 0);
    links.under_construction = link_list_new(k_out_pointer_list, owner);
    const char *position = links.text;
    uint32_t length;
    while (const char *word = next_word(&position, &length)) {
        CellHandle cell = lookup_word(links.text + (word - links.text), length);
        if (cell != 0) {
            append_link(links.under_construction, cell);
        }
    }
    link_list_append(links.under_construction)->kind = k_link_end;
    BlockHandle list = links.under_construction;
    links.under_construction = 0;
    return list;
}

void links_build(CellHandle cell) {
    if (!is_live_cell(cell)) {
        return;
    }
    links_drop(cell);
    cell_set_out_pointers(cell, links_scan_text(cell_text(cell), cell));
}

void links_drop(CellHandle cell) {
    if (is_live_cell(cell)) {
        link_list_free(cell_out_pointers(cell));
        cell_set_out_pointers(cell, 0);
    }
}

void links_build_all() {
    memset(links.marks, 0, sizeof links.marks);
    for_all_live(mark_name);
    links.names_marked = true;
    for_all_live(links_build);
    links.names_marked = false;
}

void links_drop_all() {
    for_all_live(links_drop);
}

void links_build_selection() {
    for_selection(links_build);
}

void links_drop_selection() {
    for_selection(links_drop);
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

void links_recover() {
    link_list_free(links.under_construction);
    links.under_construction = 0;
    links.names_marked = false;
    links_drop_all();
}
