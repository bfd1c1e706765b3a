#include "file/web_tags.h"

namespace {

// Indexed by WebTag.
constexpr const char *k_names[k_tag_count] = {
    "eof",   "cell",  "cname",    "text",     "val",     "form",  "script", "opts",
    "odest", "oname", "onewl",    "isrc",     "iname",   "iecho", "cfmt",   "citer",
    "cdisp", "rtype", "rfmt",     "rall",     "starg",   "srpl",  "scount", "sout",
    "nfmt",  "ndec",  "nang",     "scrfont",  "statwin", "pltng", "xmax",   "xmin",
    "ymax",  "ymin",  "xintrvls", "yintrvls", "xycells",
};

constexpr char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

// A name of up to eight characters as one number, regardless of case; 0 for a longer or empty one.
constexpr uint64_t key_of(const char *name) {
    uint64_t key = 0;
    for (unsigned i = 0; name[i] != 0; ++i) {
        if (i == k_tag_name_max) {
            return 0;
        }
        key = key << 8 | static_cast<uint8_t>(lower(name[i]));
    }
    return key;
}

struct Keys {
    uint64_t of[k_tag_count];
};

constexpr Keys make_keys() {
    Keys keys = {};
    for (int tag = 0; tag < k_tag_count; ++tag) {
        keys.of[tag] = key_of(k_names[tag]);
    }
    return keys;
}

constexpr Keys k_keys = make_keys();

}  // namespace

const char *web_tag_name(int tag) {
    return k_names[tag];
}

// The tags that stand in every cell come first in the table.
int web_tag_find(const char *name) {
    uint64_t key = key_of(name);
    if (key == 0) {
        return -1;
    }
    for (int tag = 0; tag < k_tag_count; ++tag) {
        if (k_keys.of[tag] == key) {
            return tag;
        }
    }
    return -1;
}

bool names_match(const char *name, const char *lower_case) {
    while (*lower_case != 0 && lower(*name) == *lower_case) {
        ++name;
        ++lower_case;
    }
    return *name == 0 && *lower_case == 0;
}
