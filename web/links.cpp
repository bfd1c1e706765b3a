#include "web/links.h"

#include "core/check.h"
#include "core/text.h"
#include "web/cell_numbers.h"
#include "web/cells.h"
#include "web/index.h"
#include "web/link_list.h"
#include "web/report_selection.h"
#include "web/words.h"

#include <algorithm>
#include <cstring>

constexpr uint8_t k_out_pointer_list = 1;

constexpr uint32_t k_name_marks = 16384;  // a power of two

static struct Links {
    BlockHandle under_construction;  // the list being built; recovery gives it back
    char text[k_scanned_text_max + sizeof(uint32_t)];

    // While all lists are built: a mark for every name, by its hash, so that most words that name
    // nothing need no search.
    bool names_marked;
    uint8_t marks[k_name_marks / 8];
} links;

namespace {

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
    const uint32_t kept = length < sizeof first ? (1U << length * 8) - 1 : UINT32_MAX;
    return ((first & kept & 0xDFDFDFDF) + length) * 0x9E3779B1 >> 18;
}
static_assert(k_name_marks == 1U << (32 - 18));

void mark_name(CellHandle cell) {
    const uint32_t length = text_copy_out(links.text, cell_name(cell), k_scanned_text_max);
    std::replace(links.text, links.text + length, ' ', '_');
    const uint32_t hash = name_hash(links.text, length);
    links.marks[hash / 8] |= static_cast<uint8_t>(1U << hash % 8);
}

bool may_be_name(const char *word, uint32_t length) {
    const uint32_t hash = name_hash(word, length);
    return !links.names_marked || (links.marks[hash / 8] >> hash % 8 & 1) != 0;
}

// The live cell that a word names. The word ends in the middle of a text: the character behind it
// gives way to a terminator for the time of the search.
CellHandle lookup_word(char *word, uint32_t length) {
    if (!may_be_name(word, length)) {
        return 0;
    }
    const char behind = word[length];
    word[length] = 0;
    const CellHandle cell = cell_lookup(word);
    word[length] = behind;
    return cell;
}

void for_all_live(void (*function)(CellHandle cell)) {
    for (CellHandle c = first_live_cell(); c != 0; c = next_live_cell(c)) {
        function(c);
    }
}

void for_selection(void (*function)(CellHandle cell)) {
    for (uint32_t i = 0; i < report_selection_count(); ++i) {
        function(report_selection_at(i));
    }
}

}  // namespace

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
        const CellHandle cell = lookup_word(links.text + (word - links.text), length);
        if (cell != 0) {
            append_link(links.under_construction, cell);
        }
    }
    link_list_append(links.under_construction)->kind = k_link_end;
    const BlockHandle list = links.under_construction;
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

void links_recover() {
    link_list_free(links.under_construction);
    links.under_construction = 0;
    links.names_marked = false;
    links_drop_all();
}
