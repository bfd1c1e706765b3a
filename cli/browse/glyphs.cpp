#include "cli/browse/glyphs.h"

#include "cli/link_words.h"

#include <algorithm>
#include <cstdint>

#include <wchar.h>

namespace {

// A screen cell holds a character and four that combine with it.
constexpr size_t k_combined_max = 5;

// Line separators, and what makes a terminal write from right to left.
bool is_order(uint32_t code) {
    return (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

// Columns of a character; below 0 for one that is not shown as itself.
int width_of(uint32_t code) {
    if (code == k_no_character || is_order(code)) {
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
    size_t behind = at;
    uint32_t code = next_character(text, &behind);
    Glyph glyph = {0, width_of(code), {}};
    // A character that combines with nothing would go to whatever stands before it on the screen.
    if (glyph.width <= 0) {
        return spelled_byte(text[at]);
    }
    size_t count = 0;
    do {
        if (count < k_combined_max) {
            glyph.shown[count++] = static_cast<wchar_t>(code);
        }
        glyph.size = behind - at;
        if (behind >= text.size()) {
            break;
        }
        code = next_character(text, &behind);
    } while (width_of(code) == 0);
    return glyph;
}
