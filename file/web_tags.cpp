#include "file/web_tags.h"

#include <cstring>

namespace {

// Indexed by WebTag.
constexpr const char *k_names[k_tag_count] = {
    "eof",   "cell",  "cname",    "text",     "val",     "form",  "script", "opts",
    "odest", "oname", "onewl",    "isrc",     "iname",   "iecho", "cfmt",   "citer",
    "cdisp", "rtype", "rfmt",     "rall",     "starg",   "srpl",  "scount", "sout",
    "nfmt",  "ndec",  "nang",     "scrfont",  "statwin", "pltng", "xmax",   "xmin",
    "ymax",  "ymin",  "xintrvls", "yintrvls", "xycells",
};

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

}  // namespace

const char *web_tag_name(int tag) {
    return k_names[tag];
}

// The tags that stand in every cell come first in the table.
int web_tag_find(const char *name) {
    for (int tag = 0; tag < k_tag_count; ++tag) {
        if (names_match(name, k_names[tag])) {
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
