// The web file's tag names.
#pragma once

#include "web/option_tags.h"

#include <cstdint>

constexpr unsigned k_tag_name_max = 8;  // characters of the longest name

// A name of up to eight characters as one number, regardless of case; no two names share one. What
// is too long to be a tag's name has a key that no tag has.
using TagKey = uint64_t;
constexpr TagKey k_no_tag_key = ~TagKey{0};

// Adds a character to a key that began as 0. False when the name is too long.
constexpr bool tag_key_append(TagKey *key, char c) {
    if (*key >> 8 * (k_tag_name_max - 1) != 0) {
        *key = k_no_tag_key;
        return false;
    }
    char lower = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    *key = *key << 8 | static_cast<uint8_t>(lower);
    return true;
}

constexpr TagKey web_tag_key(const char *name) {
    TagKey key = 0;
    while (*name != 0 && tag_key_append(&key, *name)) {
        ++name;
    }
    return key;
}

// The name of a tag as it is written.
const char *web_tag_name(int tag);

// The index of the tag with this key, or -1.
int web_tag_find(TagKey key);

// Whether a name is this lower-case one, regardless of case.
bool names_match(const char *name, const char *lower_case);
