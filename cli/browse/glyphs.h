// How bytes of a web look on a terminal. Whatever they are, nothing reaches the terminal that it
// could take for an order: control characters, those that turn the direction of writing, and bytes
// that are no UTF-8 are spelled \xNN.
#pragma once

#include <cstddef>
#include <string_view>

constexpr size_t k_glyph_characters = 8;

// One step of a line: a character and what combines with it.
struct Glyph {
    size_t size;                            // bytes
    int width;                              // columns
    wchar_t shown[k_glyph_characters + 1];  // zero-terminated
};

constexpr int k_tab_columns = 8;

// At a position in front of the text's end. The column is where in its row it begins, for tabs.
Glyph glyph_at(std::string_view text, size_t at, int column);
