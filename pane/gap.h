// An array with a hole where it was changed last, so that a change near the one before moves
// little.
//
// Items are bytes, or aligned integers of 2 or 4 bytes. The hole is never larger than an eighth of
// the array and 4 KB, but for gap_keep_hole().
#pragma once

#include <cstddef>
#include <cstdint>

struct Gap {
    char *memory;
    uint32_t width;     // of an item, in bytes
    uint32_t length;    // items
    uint32_t capacity;  // items, those of the hole included
    uint32_t hole;      // the item that stands behind the hole
};

void gap_init(Gap *gap, uint32_t width);
void gap_free(Gap *gap);

inline size_t gap_bytes(const Gap *gap, uint32_t items) {
    return size_t{items} * gap->width;
}

inline char *gap_item(const Gap *gap, uint32_t at) {
    const uint32_t place = at < gap->hole ? at : at + (gap->capacity - gap->length);
    return gap->memory + gap_bytes(gap, place);
}

// Makes room for so many items more. False when there is no memory; the array is then as before.
bool gap_reserve(Gap *gap, uint32_t count);

// Opens `count` items at a place and returns the first of them, which stand in one piece; their
// bytes are what was there. The room must have been reserved.
char *gap_open(Gap *gap, uint32_t at, uint32_t count);

// Takes items out; their room stays reserved until most of a large hole is given back.
void gap_cut(Gap *gap, uint32_t at, uint32_t count);
void gap_give_back(Gap *gap);

// Both.
void gap_remove(Gap *gap, uint32_t at, uint32_t count);

// The items from `at` that stand in one piece, `count` at most; says how many.
const char *gap_piece(const Gap *gap, uint32_t at, uint32_t *count);

// Moves the hole to a place.
void gap_move_hole(Gap *gap, uint32_t at);

// Copies items out.
void gap_copy(const Gap *gap, uint32_t at, uint32_t count, char *to);
