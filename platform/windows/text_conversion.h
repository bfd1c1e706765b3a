// Between the program's 8-bit text, which is UTF-8, and the system's UTF-16.
#pragma once

#include <cstdint>

constexpr uint32_t k_conversion_units = 256;

// Each converts into one static buffer of 256 units (bytes), which the next call overwrites, and
// cuts what does not fit. A byte that is no part of UTF-8 is taken as a Latin-1 character; each
// UTF-16 unit is encoded by itself. What is cut ends between characters, and so not with the first
// unit of a pair.
const wchar_t *to_utf16(const char *text);
const char *to_8bit(const wchar_t *text);

// The same into the caller's buffer of `size` units (bytes), terminator included. Returns the
// number converted.
uint32_t utf16_copy(wchar_t *to, uint32_t size, const char *text);
uint32_t utf8_copy(char *to, uint32_t size, const wchar_t *text);

// Bytes that the text takes in UTF-8, without a terminator.
uint32_t utf8_size(const wchar_t *text);

// Copies at most `limit` bytes of a text, whole characters only, and terminates them. The buffer
// holds limit + 1 bytes.
void copy_characters(char *to, const char *from, uint32_t limit);
