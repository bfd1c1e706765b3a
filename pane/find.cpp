#include "pane/find.h"

#include "pane/characters.h"

namespace {

// The target as a text of its own, so that its characters are read like any.
Gap target_text(const Search &search) {
    return {const_cast<char *>(search.target), 1, search.length, search.length, search.length};
}

bool same(const Search &search, uint32_t a, uint32_t b) {
    return a == b || (search.fold != nullptr && search.fold(a) == search.fold(b));
}

// An empty text is found where it is looked for.
bool find_nothing(uint32_t from, Found *found) {
    *found = {from, from};
    return true;
}

// Where the match ends that begins at a position; 0 when none does.
uint32_t match_end(const Gap *text, const Search &search, uint32_t at, uint32_t end) {
    const Gap target = target_text(search);
    uint32_t in_target = 0;
    while (in_target < target.length) {
        if (at >= end) {
            return 0;
        }
        const Character wanted = character_at(&target, in_target);
        const Character here = character_at(text, at);
        if (!same(search, wanted.code, here.code)) {
            return 0;
        }
        in_target += wanted.size;
        at += here.size;
    }
    return at <= end ? at : 0;
}

}  // namespace

bool find_forward(const Gap *text, const Search &search, uint32_t from, uint32_t to, Found *found) {
    if (search.length == 0) {
        return find_nothing(from, found);
    }
    for (uint32_t at = from; at < to; at += character_at(text, at).size) {
        const uint32_t end = match_end(text, search, at, to);
        if (end != 0) {
            *found = {at, end};
            return true;
        }
    }
    return false;
}

bool find_back(const Gap *text, const Search &search, uint32_t from, uint32_t to, Found *found) {
    if (search.length == 0) {
        return find_nothing(from, found);
    }
    uint32_t at = from;
    while (at > to) {
        at -= character_before(text, at).size;
        const uint32_t end = match_end(text, search, at, from);
        if (end != 0) {
            *found = {at, end};
            return true;
        }
    }
    return false;
}
