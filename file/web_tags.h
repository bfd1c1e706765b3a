// The web file's tag names.
#pragma once

#include "web/option_tags.h"

#include <cstdint>

constexpr unsigned k_tag_name_max = 8;  // characters of the longest name

// The tags' names, by WebTag.
constexpr char k_tag_names[k_tag_count][k_tag_name_max + 1] = {
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

// The index of the tag of this name, regardless of case, or -1.
int web_tag_find(const char *name);

// The same for a name that stands with the '>' behind it in the lowest bytes of a word, spelled as
// it is written; `length` receives their number. The longest names do not fit: -1.
int web_tag_find_written(uint64_t word, uint32_t *length);

// Whether a name is this lower-case one, regardless of case.
bool names_match(const char *name, const char *lower_case);
