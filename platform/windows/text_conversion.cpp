#include "platform/windows/text_conversion.h"

static struct TextConversion {
    wchar_t utf16[k_conversion_units + 1];  // the last unit stays 0
    char bytes[k_conversion_units + 1];     // likewise
} conversion;

namespace {

uint32_t following_bytes(uint32_t lead) {
    if (lead < 0xC0 || lead >= 0xF8) {
        return 0;
    }
    return lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
}

// Decodes one character and returns its length in bytes. The terminator continues no character, so
// nothing behind it is ever read.
uint32_t decode(const char *p, uint32_t *code) {
    const uint32_t lead = static_cast<uint8_t>(*p);
    const uint32_t count = following_bytes(lead);
    uint32_t value = count == 0 ? lead : lead & (0x3Fu >> count);
    for (uint32_t i = 1; i <= count; ++i) {
        const uint32_t byte = static_cast<uint8_t>(p[i]);
        if ((byte & 0xC0) != 0x80) {
            *code = lead;
            return 1;
        }
        value = value << 6 | (byte & 0x3F);
    }
    *code = value;
    return count + 1;
}

uint32_t encoded_size(uint32_t unit) {
    return unit < 0x80 ? 1 : unit < 0x800 ? 2 : 3;
}

// The first unit of a pair, whose three bytes are no character without the second's.
bool is_first_half(uint32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

void encode(char *to, uint32_t unit) {
    if (unit < 0x80) {
        to[0] = static_cast<char>(unit);
    } else if (unit < 0x800) {
        to[0] = static_cast<char>(0xC0 | unit >> 6);
        to[1] = static_cast<char>(0x80 | (unit & 0x3F));
    } else {
        to[0] = static_cast<char>(0xE0 | unit >> 12);
        to[1] = static_cast<char>(0x80 | (unit >> 6 & 0x3F));
        to[2] = static_cast<char>(0x80 | (unit & 0x3F));
    }
}

}  // namespace

uint32_t utf16_copy(wchar_t *to, uint32_t size, const char *text) {
    uint32_t count = 0;
    while (*text != 0) {
        uint32_t code = 0;
        text += decode(text, &code);
        const uint32_t units = code > 0xFFFF ? 2 : 1;
        if (count + units >= size) {
            count -= count > 0 && is_first_half(to[count - 1]) ? 1U : 0U;
            break;
        }
        if (units == 2) {
            to[count] = static_cast<wchar_t>(0xD7C0 + (code >> 10));
            to[count + 1] = static_cast<wchar_t>(0xDC00 | (code & 0x3FF));
        } else {
            to[count] = static_cast<wchar_t>(code);
        }
        count += units;
    }
    to[count] = 0;
    return count;
}

uint32_t utf8_copy(char *to, uint32_t size, const wchar_t *text) {
    uint32_t count = 0;
    for (; *text != 0; ++text) {
        const uint32_t bytes = encoded_size(*text);
        if (count + bytes >= size) {
            count -= count > 0 && is_first_half(text[-1]) ? 3U : 0U;
            break;
        }
        encode(to + count, *text);
        count += bytes;
    }
    to[count] = 0;
    return count;
}

uint32_t utf8_size(const wchar_t *text) {
    uint32_t count = 0;
    for (; *text != 0; ++text) {
        count += encoded_size(*text);
    }
    return count;
}

const wchar_t *to_utf16(const char *text) {
    utf16_copy(conversion.utf16, k_conversion_units + 1, text);
    return conversion.utf16;
}

const char *to_8bit(const wchar_t *text) {
    utf8_copy(conversion.bytes, k_conversion_units + 1, text);
    return conversion.bytes;
}

void copy_characters(char *to, const char *from, uint32_t limit) {
    uint32_t count = 0;
    uint32_t before = 0;
    while (from[count] != 0) {
        uint32_t code = 0;
        const uint32_t bytes = decode(from + count, &code);
        if (count + bytes > limit) {
            count -= is_first_half(before) ? 3U : 0U;
            break;
        }
        before = code;
        for (uint32_t i = 0; i < bytes; ++i) {
            to[count + i] = from[count + i];
        }
        count += bytes;
    }
    to[count] = 0;
}
