// Values: a number and a text form of it, kept in step lazily. A value is a chain of value blocks;
// the holder releases it with val_free().
#pragma once

#include "core/block_arena.h"

enum ValueState : uint8_t {
    k_value_empty = 0,
    k_value_text = 1,    // the text form is current
    k_value_number = 2,  // the number form is current
};

constexpr uint8_t k_value_in_step = 1;  // flag: the other form says the same
constexpr uint8_t k_value_nan = 2;      // flag: not a number

BlockHandle val_new();
void val_free(BlockHandle value);
BlockHandle val_copy(BlockHandle value);

// Replaces the text form, which the value takes over, and makes it the current one.
void val_set_text(BlockHandle value, BlockHandle text);

// Make the text (number) form current, converting when the other one is newer.
void val_make_text(BlockHandle value);
void val_make_number(BlockHandle value);

// 0 for an empty text, else 2: every nonempty text is tried as a number.
int val_text_class(BlockHandle text);

// A value made from a text, which it takes over (0 for none) also when it runs out of blocks.
BlockHandle val_from_text(BlockHandle text);

uint8_t val_state(BlockHandle value);
uint8_t val_flags(BlockHandle value);
BlockHandle val_text(BlockHandle value);
double val_number(BlockHandle value);

// Gives back a value that was being copied when the blocks ran out. Part of recovery.
void val_recover();
