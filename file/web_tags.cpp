#include "file/web_tags.h"

namespace {

struct TagWords {
    uint64_t of[k_tag_count];
};

constexpr TagWords make_tag_words() {
    TagWords words = {};
    for (int tag = 0; tag < k_tag_count; ++tag) {
        words.of[tag] = name_word(web_tag_name(tag));
    }
    return words;
}

constexpr TagWords k_tag_words = make_tag_words();

}  // namespace

// The web's own tag comes but once in a file and is looked at last.
int web_tag_find(uint64_t name) {
    for (int tag = k_tag_eof + 1; tag < k_tag_count; ++tag) {
        if (k_tag_words.of[tag] == name) {
            return tag;
        }
    }
    return name == k_tag_words.of[k_tag_eof] ? +k_tag_eof : -1;
}
