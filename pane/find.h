// Looking for a text within a text.
#pragma once

#include "pane/gap.h"

struct Search {
    const char *target;
    uint32_t length;  // of it, in bytes
    uint32_t (*fold)(
        uint32_t code);  // what makes letters of either case the same; null: case matters
};

struct Found {
    uint32_t start;
    uint32_t end;
};

// The first match that begins at `from` or behind it and ends at `to` or before.
bool find_forward(const Gap *text, const Search &search, uint32_t from, uint32_t to, Found *found);

// The last match that ends at `from` or before it and begins at `to` or behind.
bool find_back(const Gap *text, const Search &search, uint32_t from, uint32_t to, Found *found);
