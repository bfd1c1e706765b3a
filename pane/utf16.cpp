#include "pane/utf16.h"

#include "pane/characters.h"

namespace {

constexpr uint32_t k_replacement = 0xFFFD;

bool is_high(wchar_t unit) {
    return (unit & 0xFC00) == 0xD800;
}

bool is_low(wchar_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

// The character that begins at a unit; moves `*at` behind it.
uint32_t next_code(const wchar_t *units, uint32_t count, uint32_t *at) {
    const wchar_t unit = units[(*at)++];
    if (is_high(unit) && *at < count && is_low(units[*at])) {
        return 0x10000 + ((unit & 0x3FFU) << 10 | (units[(*at)++] & 0x3FFU));
    }
    return is_high(unit) || is_low(unit) ? k_replacement : unit;
}

}  // namespace

uint32_t utf16_encode(wchar_t *units, uint32_t code) {
    if (code < 0x10000 || code >= k_bad_byte) {
        units[0] = static_cast<wchar_t>(code & 0xFFFF);
        return 1;
    }
    units[0] = static_cast<wchar_t>(0xD7C0 + (code >> 10));
    units[1] = static_cast<wchar_t>(0xDC00 + (code & 0x3FF));
    return 2;
}

uint32_t utf16_length(const Gap *text, uint32_t from, uint32_t to) {
    uint32_t length = 0;
    for (uint32_t at = from; at < to;) {
        const Character one = character_at(text, at);
        length += one.code >= 0x10000 && one.code < k_bad_byte ? 2 : 1;
        at += one.size;
    }
    return length;
}

void utf16_copy(const Gap *text, uint32_t from, uint32_t to, wchar_t *units) {
    for (uint32_t at = from; at < to;) {
        const Character one = character_at(text, at);
        units += utf16_encode(units, one.code);
        at += one.size;
    }
}

uint32_t utf8_length(const wchar_t *units, uint32_t count) {
    uint32_t length = 0;
    for (uint32_t at = 0; at < count;) {
        char bytes[4];
        length += encode_character(bytes, next_code(units, count, &at));
    }
    return length;
}

void utf8_copy(const wchar_t *units, uint32_t count, char *bytes) {
    for (uint32_t at = 0; at < count;) {
        bytes += encode_character(bytes, next_code(units, count, &at));
    }
}

Gap text_of_bytes(const char *bytes, uint32_t length) {
    return {const_cast<char *>(bytes), 1, length, length, length};
}
