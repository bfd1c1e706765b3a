// The web file's tag names.
#pragma once

#include "core/byte_runs.h"
#include "web/option_tags.h"

#include <cstdint>

constexpr unsigned k_tag_name_max = 8;  // characters of the longest name

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

// Whether an element only groups others and has no text of its own.
constexpr bool web_tag_groups(int tag) {
    return tag == k_tag_eof || tag == k_tag_cell || tag == k_tag_opts;
}

// One field has two names.
constexpr int web_tag_field(int tag) {
    return tag == k_tag_form ? +k_tag_script : tag;
}

// A lower-case name of at most 8 characters as a word: the last one highest, zeros below the first.
// No name is the word 0.
constexpr uint64_t name_word(const char *name) {
    uint64_t word = 0;
    for (; *name != 0; ++name) {
        word = word >> 8 | static_cast<uint64_t>(static_cast<uint8_t>(*name)) << 56;
    }
    return word;
}

// The same of the first `length` of 8 or more bytes, in any case; 0 for a name that is empty or too
// long. (A letter's case is one bit, and what is compared with has letters only.)
inline uint64_t name_word_folded(const char *name, uint32_t length) {
    if (length - 1 >= k_tag_name_max) {
        return 0;
    }
    return (load<uint64_t>(name) | 0x2020202020202020) << (64 - 8 * length);
}

// The index of the tag whose name is this word, or -1.
int web_tag_find(uint64_t name);
