#include "shell/find/search_walk.h"

#include "core/text.h"
#include "shell/base/scratch.h"
#include "web/index.h"

#include <cstring>

namespace {

bool is_ascii(const char *bytes, uint32_t length) {
    uint32_t i = 0;
    while (i < length && static_cast<uint8_t>(bytes[i]) < 0x80) {
        ++i;
    }
    return i == length;
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

bool same(char a, char b, bool match_case) {
    return match_case ? a == b : lower(a) == lower(b);
}

bool stands_at(const char *text, const char *target, uint32_t length, bool match_case) {
    uint32_t i = 0;
    while (i < length && same(text[i], target[i], match_case)) {
        ++i;
    }
    return i == length;
}

// Without memory for a copy the pane has to look.
bool cell_may_hold(CellHandle cell, const char *target, bool match_case) {
    const uint32_t length = text_size(cell_text(cell));
    char *bytes = scratch_reserve(length + 1);
    if (bytes == nullptr) {
        return true;
    }
    text_copy_out(bytes, cell_text(cell), length);
    return may_hold(bytes, length, target, match_case);
}

CellHandle next_live(CellHandle cell) {
    const CellHandle next = next_live_cell(cell);
    return next != 0 ? next : first_live_cell();
}

}  // namespace

bool may_hold(const char *text, uint32_t length, const char *target, bool match_case) {
    const uint32_t target_length = static_cast<uint32_t>(strlen(target));
    if (!match_case && !(is_ascii(text, length) && is_ascii(target, target_length))) {
        return true;
    }
    for (uint32_t at = 0; at + target_length <= length; ++at) {
        if (stands_at(text + at, target, target_length, match_case)) {
            return true;
        }
    }
    return false;
}

CellHandle next_cell_to_search(CellHandle cell, CellHandle start, const char *target,
                               bool match_case) {
    do {
        cell = next_live(cell);
    } while (cell != start && !cell_may_hold(cell, target, match_case));
    return cell;
}
