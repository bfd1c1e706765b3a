#!/usr/bin/env python3
"""Prints pane/class_runs.cpp: the classes of characters beyond ASCII, as runs of code points.

    make_class_runs.py | clang-format --assume-filename=x.cpp > pane/class_runs.cpp
"""

import unicodedata

HEAD = '''// Made by scripts/make_class_runs.py from the categories of Unicode %s.
#include "pane/class_runs.h"

namespace {

// Where each run begins, times 4, and its CharacterClass.
constexpr uint32_t k_runs[] = {
'''

TAIL = '''};

constexpr uint32_t k_run_count = sizeof k_runs / sizeof k_runs[0];

}  // namespace

CharacterClass class_from_runs(uint32_t code) {
    uint32_t low = 0;
    uint32_t high = k_run_count;
    while (high - low > 1) {
        const uint32_t middle = low + (high - low) / 2;
        if (k_runs[middle] >> 2 <= code) {
            low = middle;
        } else {
            high = middle;
        }
    }
    return static_cast<CharacterClass>(k_runs[low] & 3);
}
'''

SPACE, WORD, PUNCTUATION = 0, 2, 3
ALIKE = {"Zs": SPACE, "Cc": SPACE, "Cf": SPACE}


def class_of(code):
    category = unicodedata.category(chr(code))
    if category in ("Cn", "Co", "Cs"):
        return None
    return ALIKE.get(category, WORD if category[0] in "LMN" else PUNCTUATION)


def runs():
    last = None
    for code in range(0x80, 0x110000):
        found = class_of(code)
        if found not in (None, last):
            yield code << 2 | found
            last = found


print(HEAD % unicodedata.unidata_version + ", ".join(f"0x{run:X}" for run in runs()) + TAIL, end="")
