// Characters of a text in UTF-8, and steps from one to the next.
//
// A byte that belongs to no well-formed character is a character of its own; CR LF is one step.
#pragma once

#include "pane/class_runs.h"
#include "pane/gap.h"

constexpr uint32_t k_bad_byte = 0x80000000;  // and the byte

struct Character {
    uint32_t code;
    uint32_t size;  // bytes
};

// At a position in front of the text's end.
Character character_at(const Gap *text, uint32_t position);

// The character that ends at a position behind the text's beginning.
Character character_before(const Gap *text, uint32_t position);

// A step on or back; where the text ends they stay.
uint32_t position_after(const Gap *text, uint32_t position);
uint32_t position_before(const Gap *text, uint32_t position);

// The same position, or the one behind the character or the line end that it lies in.
uint32_t position_outside(const Gap *text, uint32_t position, bool forward);

// Between CR and LF.
bool parts_line_end(const Gap *text, uint32_t position);

CharacterClass class_of(uint32_t code);

// Of the character at a position, and in front of one.
CharacterClass class_at(const Gap *text, uint32_t position);
CharacterClass class_before(const Gap *text, uint32_t position);

// A code point in UTF-8; says how many bytes, 4 at most.
uint32_t encode_character(char *to, uint32_t code);
