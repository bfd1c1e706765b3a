// Block text: every string of a web, as a chain of text blocks of up to 36 characters each.
//
// A text is named by its first block. The empty text is one empty block; 0 is no text. Blocks in
// the middle of a chain may be partly filled and a chain may end in an empty block. Characters are
// bytes 0x01 to 0xFF. Whoever holds the head releases the text with chain_free().
#pragma once

#include "core/block_arena.h"

constexpr uint32_t k_text_block_chars = k_block_payload_size;

// The characters of a text block.
inline char *text_block_chars(BlockHandle h) {
    return reinterpret_cast<char *>(block_ptr(h)) + k_block_payload_at;
}

// Allocates a chain of n / 36 + 1 empty text blocks. A chain cut short by running out of blocks is
// given back by recovery.
BlockHandle text_alloc(uint32_t n);

// Appends s[i], s[i + 1], ... to the block until the string ends or the block is full. Returns the
// index of the first character not copied.
uint32_t text_fill_block(BlockHandle h, const char *s, uint32_t i);

// Makes a text of a zero-terminated string.
BlockHandle text_from_cstring(const char *s);

// Makes a text of n bytes, none of which is 0. Like text_from_cstring otherwise.
BlockHandle text_from_bytes(const char *bytes, uint32_t n);

// The number of blocks that are missing in the chain (0 for none) for a text of n characters.
uint32_t text_missing_blocks(BlockHandle head, uint32_t n);

// Makes room for n characters by adding empty blocks; the text stays what it is at every moment,
// also when the blocks run out.
void text_grow(BlockHandle head, uint32_t n);

// Makes the chain, which must have room, hold these n bytes instead, and gives back the blocks that
// are left over. Allocates nothing.
void text_assign(BlockHandle head, const char *bytes, uint32_t n);

// Copies the block's characters to d[i], d[i + 1], ... while the index stays below m; returns the
// index behind the last one stored.
uint32_t text_copy_block(char *d, BlockHandle h, uint32_t i, uint32_t m);

// Copies at most m characters of the text into d (m + 1 bytes) and terminates them. Returns their
// number. Handle 0 gives the empty string.
uint32_t text_copy_out(char *d, BlockHandle head, uint32_t m);

// The length modulo 65,536.
uint16_t text_length(BlockHandle head);

// The whole length; what sizes and tests for emptiness go by.
uint32_t text_size(BlockHandle head);

// True when a text is nothing but blanks, tabs and line ends; also for 0.
bool text_is_blank(BlockHandle head);

// A new text of the characters from position `from` to position `to`, both 1-based and inclusive;
// `from` 0 counts as 1 and `to` is cut to the length. 0 when that is empty.
BlockHandle text_substring(BlockHandle head, uint32_t from, uint32_t to);

// A copy; that of an empty text is 0.
BlockHandle text_duplicate(BlockHandle head);

// Allocates a text block and links it in behind h; returns it.
BlockHandle text_insert_block_after(BlockHandle h);

// ---- Reader: one global cursor ------------------------------------------------------------------

constexpr int k_reader_end = -1;
constexpr int k_reader_past_end = -2;

void text_reader_start(BlockHandle head);

// The next character, as a signed byte; -1 once at the end, -2 ever after (and at once for a reader
// started on 0). The bytes 0xFF and 0xFE read as the same values: loops that must carry every byte
// go by blocks instead.
int text_reader_next();

// ---- Builder: one global cursor -----------------------------------------------------------------

// Begins a text of one empty block and returns its head, which the caller owns.
BlockHandle text_builder_start();

// Empties the text being built; its head stays.
void text_builder_restart();

// Appends one character.
void text_builder_put(char ch);

// Appends n bytes, none of which is 0.
void text_builder_put_run(const char *bytes, uint32_t n);

// Lets go of the chain; its owner keeps the head.
void text_builder_reset();

// ---- Comparison ---------------------------------------------------------------------------------
// The order of every list of cells: letters regardless of case, '_' as a space, everything else by
// byte value with 0x80-0xFF last. Negative: a sorts first; 0: equal; positive: a sorts after.

// '_' becomes ' ', a to z become A to Z; ch is taken as a signed byte.
constexpr int fold_char(int ch) {
    const int c = static_cast<signed char>(ch);
    if (c == '_') {
        return ' ';
    }
    return c >= 'a' && c <= 'z' ? c - 32 : ch;
}

int text_compare(BlockHandle a, BlockHandle b);
int text_compare_cstring(BlockHandle a, const char *s);

// Byte for byte.
bool text_equals_cstring(BlockHandle a, const char *s);
