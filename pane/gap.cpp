#include "pane/gap.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr uint32_t k_smallest_growth = 1024;  // bytes
constexpr uint32_t k_most = 0x40000000;       // bytes

uint32_t hole_size(const Gap *gap) {
    return gap->capacity - gap->length;
}

// What stands behind the hole goes to the end of the larger memory.
void spread(Gap *gap, uint32_t capacity) {
    const uint32_t behind = gap->length - gap->hole;
    memmove(gap->memory + gap_bytes(gap, capacity - behind),
            gap->memory + gap_bytes(gap, gap->capacity - behind), gap_bytes(gap, behind));
    gap->capacity = capacity;
}

}  // namespace

void gap_init(Gap *gap, uint32_t width) {
    *gap = {};
    gap->width = width;
}

void gap_free(Gap *gap) {
    free(gap->memory);
    gap_init(gap, gap->width);
}

bool gap_reserve(Gap *gap, uint32_t count) {
    if (count <= hole_size(gap) && gap->memory != nullptr) {
        return true;
    }
    const uint32_t limit = k_most / gap->width;
    if (count > limit || gap->length > limit - count) {
        return false;
    }
    const uint32_t needed = gap->length + count;
    const uint32_t capacity = needed + needed / 32 + k_smallest_growth / gap->width;
    char *memory = static_cast<char *>(realloc(gap->memory, gap_bytes(gap, capacity)));
    if (memory == nullptr) {
        return false;
    }
    gap->memory = memory;
    spread(gap, capacity);
    return true;
}

void gap_move_hole(Gap *gap, uint32_t at) {
    const uint32_t size = hole_size(gap);
    char *memory = gap->memory;
    if (at < gap->hole) {
        memmove(memory + gap_bytes(gap, at + size), memory + gap_bytes(gap, at),
                gap_bytes(gap, gap->hole - at));
    } else {
        memmove(memory + gap_bytes(gap, gap->hole), memory + gap_bytes(gap, gap->hole + size),
                gap_bytes(gap, at - gap->hole));
    }
    gap->hole = at;
}

char *gap_open(Gap *gap, uint32_t at, uint32_t count) {
    gap_move_hole(gap, at);
    gap->hole += count;
    gap->length += count;
    return gap->memory + gap_bytes(gap, at);
}

void gap_give_back(Gap *gap) {
    const uint32_t keep = gap->length / 8 + 4 * k_smallest_growth / gap->width;
    if (hole_size(gap) <= keep) {
        return;
    }
    const uint32_t capacity = gap->length + keep / 2;
    const uint32_t behind = gap->length - gap->hole;
    memmove(gap->memory + gap_bytes(gap, capacity - behind),
            gap->memory + gap_bytes(gap, gap->capacity - behind), gap_bytes(gap, behind));
    gap->capacity = capacity;
    char *less = static_cast<char *>(realloc(gap->memory, gap_bytes(gap, capacity)));
    gap->memory = less != nullptr ? less : gap->memory;
}

void gap_cut(Gap *gap, uint32_t at, uint32_t count) {
    if (at + count == gap->hole) {
        gap->hole = at;
    } else {
        gap_move_hole(gap, at);
    }
    gap->length -= count;
}

void gap_remove(Gap *gap, uint32_t at, uint32_t count) {
    gap_cut(gap, at, count);
    gap_give_back(gap);
}

const char *gap_piece(const Gap *gap, uint32_t at, uint32_t *count) {
    if (at<gap->hole && * count> gap->hole - at) {
        *count = gap->hole - at;
    }
    return gap_item(gap, at);
}

void gap_copy(const Gap *gap, uint32_t at, uint32_t count, char *to) {
    while (count > 0) {
        uint32_t here = count;
        const char *piece = gap_piece(gap, at, &here);
        memcpy(to, piece, gap_bytes(gap, here));
        to += gap_bytes(gap, here);
        at += here;
        count -= here;
    }
}
