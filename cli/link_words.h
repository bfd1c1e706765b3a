// The words of a text that can be links, as the window's panes see them: letters, digits, '_' and
// the letters of other scripts. A word names a cell when the cell has this name (cli/note.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// The next word at or behind *at, which moves behind it; empty at the end of the text. The word is
// a piece of the text itself.
std::string_view next_link_word(std::string_view text, size_t *at);

// True when some word of a text can name a cell of this name: it holds nothing but what words hold,
// and blanks for '_'.
bool can_be_linked(std::string_view name);

// The word that names a cell in a text: blanks become '_'.
std::string link_word_of(std::string_view name);

// The character that stands at *at, which moves behind it; k_no_character for a byte that belongs
// to none in UTF-8.
constexpr uint32_t k_no_character = 0xFFFFFFFF;
uint32_t next_character(std::string_view text, size_t *at);
