#include "file/web_tags.h"

namespace {

// A tag's name and '>' in the lowest bytes of a word, and which bytes of the word these are.
struct WrittenTag {
    uint64_t bytes;
    uint64_t mask;
    uint32_t length;
};

struct WrittenTags {
    WrittenTag of[k_tag_count];
};

constexpr WrittenTag make_written(const char *name) {
    WrittenTag tag = {};
    uint64_t shift = 0;
    for (; *name != 0; ++name, shift += 8) {
        if (shift == 56) {
            return {1, 0, 0};  // does not fit, and equals no word
        }
        tag.bytes |= static_cast<uint64_t>(static_cast<uint8_t>(*name)) << shift;
    }
    tag.bytes |= uint64_t{'>'} << shift;
    tag.mask = ~uint64_t{0} >> (56 - shift);
    tag.length = static_cast<uint32_t>(shift / 8 + 1);
    return tag;
}

constexpr WrittenTags make_all_written() {
    WrittenTags tags = {};
    for (int tag = 0; tag < k_tag_count; ++tag) {
        tags.of[tag] = make_written(web_tag_name(tag));
    }
    return tags;
}

constexpr WrittenTags k_written = make_all_written();

}  // namespace

int web_tag_find(const char *name) {
    for (int tag = 0; tag < k_tag_count; ++tag) {
        if (names_match(name, web_tag_name(tag))) {
            return tag;
        }
    }
    return -1;
}

// The tags that stand in every cell come first in the table, but for that of the web, which comes
// once and is looked at last.
int web_tag_find_written(uint64_t word, uint32_t *length) {
    static_assert(k_tag_eof == 0);
    for (int i = 1; i <= k_tag_count; ++i) {
        int tag = i < k_tag_count ? i : k_tag_eof;
        const WrittenTag *written = &k_written.of[tag];
        if ((word & written->mask) == written->bytes) {
            *length = written->length;
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
