// Words, the way links see them: a letter followed by letters, digits and underscores.
#pragma once

#include <cstdint>

enum CharClass : uint8_t {
    k_class_letter = 0,
    k_class_digit = 1,
    k_class_quote = 2,
    k_class_underscore = 3,
    k_class_other = 4,
    k_class_dot = 5,
    k_class_end = 6,
};

// Fills the table of character classes; once at start-up.
void char_classes_init();

// The class of a byte; everything from 0x80 up is k_class_other.
CharClass char_class(char ch);

// Finds the next word at or behind *position in a zero-terminated string. Returns its start and
// length, with *position behind it; null at the end of the string.
const char *next_word(const char **position, uint32_t *length);
