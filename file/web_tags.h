// The web file's tag names.
#pragma once

#include "web/option_tags.h"

#include <cstdint>

constexpr unsigned k_tag_name_max = 8;  // characters of the longest name

// A name of up to eight characters as one number, its first character lowest, regardless of case:
// setting the case bit makes a letter of nothing but that letter. 0 is the key of no tag.
using TagKey = uint64_t;

// The key of `length` characters (1 to 8) that are the lowest bytes of a word.
constexpr TagKey tag_key_of_word(uint64_t word, unsigned length) {
    constexpr uint64_t k_case_bits = 0x2020202020202020;
    return (word | k_case_bits) & (~uint64_t{0} >> 8 * (k_tag_name_max - length));
}

constexpr TagKey web_tag_key(const char *name) {
    uint64_t word = 0;
    unsigned length = 0;
    for (; name[length] != 0; ++length) {
        if (length == k_tag_name_max) {
            return 0;
        }
        word |= static_cast<uint64_t>(static_cast<uint8_t>(name[length])) << 8 * length;
    }
    return length > 0 ? tag_key_of_word(word, length) : 0;
}

// The tags' names, by WebTag.
constexpr const char *k_tag_names[k_tag_count] = {
    "eof",   "cell",  "cname",    "text",     "val",     "form",  "script", "opts",
    "odest", "oname", "onewl",    "isrc",     "iname",   "iecho", "cfmt",   "citer",
    "cdisp", "rtype", "rfmt",     "rall",     "starg",   "srpl",  "scount", "sout",
    "nfmt",  "ndec",  "nang",     "scrfont",  "statwin", "pltng", "xmax",   "xmin",
    "ymax",  "ymin",  "xintrvls", "yintrvls", "xycells",
};

// The name of a tag as it is written.
constexpr const char *web_tag_name(int tag) {
    return k_tag_names[tag];
}

// The index of the tag with this key, or -1.
int web_tag_find(TagKey key);

// Whether a name is this lower-case one, regardless of case.
bool names_match(const char *name, const char *lower_case);
