// The web file's tags: their indexes, their names and the options that they stand for.
#pragma once

#include "core/byte_runs.h"
#include "web/options.h"

#include <cstdint>

// The format fixes the indexes; those of the options are given in their rows.
enum WebTag : int {
    k_tag_eof = 0,
    k_tag_cell = 1,
    k_tag_cname = 2,
    k_tag_text = 3,
    k_tag_val = 4,
    k_tag_form = 5,
    k_tag_script = 6,
    k_tag_opts = 7,
    k_tag_scrfont = 27,  // this and the next are known and mean nothing
    k_tag_statwin = 28,
#define SAVED_OPTION(type, name, initial, least, most, tag, ...) k_tag_##name = tag,
#include "web/options.def"
    k_tag_count = 10 + k_saved_option_count
};

// The tags of the options that are kept in the web file, by OptionId.
constexpr uint8_t k_option_tags[k_saved_option_count] = {
#define SAVED_OPTION(type, name, initial, least, most, tag, ...) tag,
#include "web/options.def"
};

// Options are written in the order of their ids, which is that of the column `place`.
#define SAVED_OPTION(type, name, initial, least, most, tag, place, ...)                            \
    static_assert(k_option_##name == (place)-1, "options.def: " #name " is not in its place");
#include "web/options.def"

constexpr unsigned k_tag_name_max = 8;  // characters of the longest name

// Rows of characters: pointers to them would take more room, and be put right when the program is
// loaded.
struct WebTagNames {
    char of[k_tag_count][k_tag_name_max + 1];
};

constexpr void put_tag_name(WebTagNames *names, int tag, const char *name) {
    for (unsigned i = 0; name[i] != 0; ++i) {
        names->of[tag][i] = name[i];
    }
}

constexpr WebTagNames make_tag_names() {
    WebTagNames names = {};
    put_tag_name(&names, k_tag_eof, "eof");
    put_tag_name(&names, k_tag_cell, "cell");
    put_tag_name(&names, k_tag_cname, "cname");
    put_tag_name(&names, k_tag_text, "text");
    put_tag_name(&names, k_tag_val, "val");
    put_tag_name(&names, k_tag_form, "form");
    put_tag_name(&names, k_tag_script, "script");
    put_tag_name(&names, k_tag_opts, "opts");
    put_tag_name(&names, k_tag_scrfont, "scrfont");
    put_tag_name(&names, k_tag_statwin, "statwin");
#define SAVED_OPTION(type, name, ...) put_tag_name(&names, k_tag_##name, #name);
#include "web/options.def"
    return names;
}

// By WebTag.
constexpr WebTagNames k_tag_names = make_tag_names();

// As many names as indexes, and none without: no two tags have the same one.
constexpr bool every_tag_has_a_name() {
    for (const auto &name : k_tag_names.of) {
        if (name[0] == 0) {
            return false;
        }
    }
    return true;
}
static_assert(every_tag_has_a_name(), "options.def: the tags' indexes have a gap");

// The name of a tag as it is written.
constexpr const char *web_tag_name(int tag) {
    return k_tag_names.of[tag];
}

// The option that a tag stands for; k_option_count when it stands for none.
constexpr OptionId web_tag_option(int tag) {
    uint32_t id = 0;
    while (id < k_saved_option_count && k_option_tags[id] != tag) {
        ++id;
    }
    return id < k_saved_option_count ? static_cast<OptionId>(id) : k_option_count;
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
