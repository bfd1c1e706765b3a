#include "file/web_tags.h"

namespace {

struct Keys {
    TagKey of[k_tag_count];
};

constexpr Keys make_keys() {
    Keys keys = {};
    for (int tag = 0; tag < k_tag_count; ++tag) {
        keys.of[tag] = web_tag_key(k_tag_names[tag]);
    }
    return keys;
}

constexpr Keys k_keys = make_keys();

}  // namespace

// The tags that stand in every cell come first in the table.
int web_tag_find(TagKey key) {
    for (int tag = 0; tag < k_tag_count; ++tag) {
        if (k_keys.of[tag] == key) {
            return tag;
        }
    }
    return -1;
}

bool names_match(const char *name, const char *lower_case) {
    for (;; ++name, ++lower_case) {
        char c = *name >= 'A' && *name <= 'Z' ? static_cast<char>(*name + ('a' - 'A')) : *name;
        if (c != *lower_case) {
            return false;
        }
        if (c == 0) {
            return true;
        }
    }
}
