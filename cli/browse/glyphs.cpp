#include "cli/browse/glyphs.h"

#include "pane/characters.h"

#include <algorithm>
#include <cstdint>

#include <wchar.h>

namespace {

// A screen cell holds a character and four that combine with it.
constexpr size_t k_combined_max = 5;

// The text as the pane's functions take it; nothing is copied and nothing written.
Gap gap_over(std::string_view text) {
    const auto length = static_cast<uint32_t>(text.size());
    Gap gap = {};
    gap.memory = const_cast<char *>(text.data());
    gap.length = length;
    gap.hole = length;
    gap.capacity = length;
    gap.width = 1;
    return gap;
}

// Line separators, and what makes a terminal write from right to left.
bool is_order(uint32_t code) {
    return (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

// Columns of a character; below 0 for one that is not shown as itself.
int width_of(uint32_t code) {
    if ((code & k_bad_byte) != 0 || is_order(code)) {
        return -1;
    }
    return code >= 0x20 && code < 0x7F ? 1 : wcwidth(static_cast<wchar_t>(code));
}

Glyph spelled_byte(char byte) {
    constexpr wchar_t k_hex[] = L"0123456789abcdef";
    const auto value = static_cast<uint8_t>(byte);
    return {1, 4, {L'\\', L'x', k_hex[value >> 4], k_hex[value & 15], 0}};
}

Glyph tab_at(int column) {
    Glyph glyph = {1, k_tab_columns - column % k_tab_columns, {}};
    std::fill_n(glyph.shown, glyph.width, L' ');
    return glyph;
}

}  // namespace

Glyph glyph_at(std::string_view text, size_t at, int column) {
    if (text[at] == '\t') {
        return tab_at(column);
    }
    const Gap gap = gap_over(text);
    Character character = character_at(&gap, static_cast<uint32_t>(at));
    Glyph glyph = {0, width_of(character.code), {}};
    // A character that combines with nothing would go to whatever stands before it on the screen.
    if (glyph.width <= 0) {
        return spelled_byte(text[at]);
    }
    size_t count = 0;
    do {
        if (count < k_combined_max) {
            glyph.shown[count++] = static_cast<wchar_t>(character.code);
        }
        glyph.size += character.size;
        if (at + glyph.size >= text.size()) {
            break;
        }
        character = character_at(&gap, static_cast<uint32_t>(at + glyph.size));
    } while (width_of(character.code) == 0);
    return glyph;
}
