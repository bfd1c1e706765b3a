// UTF-16, which the system speaks. Bytes that are no UTF-8 are taken for Latin-1.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pane/gap.h"

// How many units so many bytes make; and the units, without a terminator.
uint32_t utf16_length(const Gap *text, uint32_t from, uint32_t to);
void utf16_copy(const Gap *text, uint32_t from, uint32_t to, wchar_t *units);

// One character as UTF-16; says how many units, 2 at most.
uint32_t utf16_encode(wchar_t *units, uint32_t code);

// How many bytes so many units make, and the bytes. A half of a pair makes U+FFFD.
uint32_t utf8_length(const wchar_t *units, uint32_t count);
void utf8_copy(const wchar_t *units, uint32_t count, char *bytes);

// Bytes that are no part of a document, as a text.
Gap text_of_bytes(const char *bytes, uint32_t length);
