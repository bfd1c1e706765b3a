// What may be entered for a setting. Knows no window.
#pragma once

#include <cstdint>

// True when the text takes at most `capacity` bytes of UTF-8 and has none of the `forbidden`
// characters.
bool text_allowed(const wchar_t *text, uint32_t capacity, const wchar_t *forbidden);

// True for a whole number, blanks around it aside, from `least` to `most`; leaves it in `value`.
bool number_allowed(const wchar_t *text, int32_t least, int32_t most, int32_t *value);
