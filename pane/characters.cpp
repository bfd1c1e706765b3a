#include "pane/characters.h"

namespace {

uint8_t byte_at(const Gap *text, uint32_t at) {
    return at < text->length ? static_cast<uint8_t>(*gap_item(text, at)) : uint8_t{0};
}

bool is_trail(uint8_t byte) {
    return (byte & 0xC0) == 0x80;
}

uint32_t size_from_lead(uint8_t lead) {
    return lead < 0xC2 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 1;
}

// Neither longer than need be, nor half of a pair, nor behind the last code point.
bool is_code(uint32_t code, uint32_t size) {
    if (size == 3) {
        return code >= 0x800 && (code < 0xD800 || code > 0xDFFF);
    }
    return size != 4 || (code >= 0x10000 && code <= 0x10FFFF);
}

}  // namespace

Character character_at(const Gap *text, uint32_t position) {
    const uint8_t lead = byte_at(text, position);
    const Character bad = {k_bad_byte | lead, 1};
    if (lead < 0x80) {
        return {lead, 1};
    }
    const uint32_t size = size_from_lead(lead);
    uint32_t code = lead & (0x7FU >> size);
    for (uint32_t i = 1; i < size; ++i) {
        const uint8_t trail = byte_at(text, position + i);
        if (!is_trail(trail)) {
            return bad;
        }
        code = code << 6 | (trail & 0x3FU);
    }
    return size > 1 && is_code(code, size) ? Character{code, size} : bad;
}

Character character_before(const Gap *text, uint32_t position) {
    for (uint32_t back = 2; back <= 4 && back <= position; ++back) {
        if (!is_trail(byte_at(text, position - back + 1))) {
            break;
        }
        const Character found = character_at(text, position - back);
        if (found.size == back) {
            return found;
        }
    }
    const uint8_t last = byte_at(text, position - 1);
    return {last < 0x80 ? last : k_bad_byte | last, 1};
}

bool parts_line_end(const Gap *text, uint32_t position) {
    return position > 0 && position < text->length && byte_at(text, position) == '\n' &&
           byte_at(text, position - 1) == '\r';
}

uint32_t position_after(const Gap *text, uint32_t position) {
    return position_outside(text, position + 1, true);
}

uint32_t position_before(const Gap *text, uint32_t position) {
    return position > 0 ? position_outside(text, position - 1, false) : 0;
}

uint32_t position_outside(const Gap *text, uint32_t position, bool forward) {
    if (position >= text->length) {
        return text->length;
    }
    if (parts_line_end(text, position)) {
        return forward ? position + 1 : position - 1;
    }
    for (uint32_t back = 1; back < 4 && back <= position; ++back) {
        if (!is_trail(byte_at(text, position - back + 1))) {
            break;
        }
        const uint32_t size = character_at(text, position - back).size;
        if (size > back) {
            return forward ? position - back + size : position - back;
        }
    }
    return position;
}

CharacterClass class_of(uint32_t code) {
    if (code >= 0x80) {
        return code >= k_bad_byte ? CharacterClass::punctuation : class_from_runs(code);
    }
    if (code == '\r' || code == '\n') {
        return CharacterClass::newline;
    }
    const uint32_t letter = code | 0x20;
    if ((letter >= 'a' && letter <= 'z') || (code >= '0' && code <= '9') || code == '_') {
        return CharacterClass::word;
    }
    return code <= ' ' ? CharacterClass::space : CharacterClass::punctuation;
}

CharacterClass class_at(const Gap *text, uint32_t position) {
    return class_of(character_at(text, position).code);
}

CharacterClass class_before(const Gap *text, uint32_t position) {
    return class_of(character_before(text, position).code);
}

uint32_t encode_character(char *to, uint32_t code) {
    if (code < 0x80) {
        to[0] = static_cast<char>(code);
        return 1;
    }
    const uint32_t size = code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
    for (uint32_t i = size - 1; i > 0; --i) {
        to[i] = static_cast<char>(0x80 | (code & 0x3F));
        code >>= 6;
    }
    to[0] = static_cast<char>((0xF00U >> size) | code);
    return size;
}
