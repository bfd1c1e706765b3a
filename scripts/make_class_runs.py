#!/usr/bin/env python3
"""Prints pane/class_runs.cpp: the classes of characters beyond ASCII, as runs of code points.

    make_class_runs.py | clang-format --assume-filename=x.cpp > pane/class_runs.cpp
"""

import unicodedata

HEAD = '''// Made by scripts/make_class_runs.py from the categories of Unicode %s.
#include "pane/class_runs.h"

namespace {

// How long each run is, times 4, and its CharacterClass: seven bits a byte, the highest first, and
// 0x80 in all but the last. Most runs take one byte.
constexpr uint8_t k_runs[] = {
'''

TAIL = '''};

}  // namespace

CharacterClass class_from_runs(uint32_t code) {
    const uint8_t *next = k_runs;
    uint32_t end = 0x80;
    uint32_t run = 0;
    do {
        run = 0;
        do {
            run = run << 7 | (*next & 0x7FU);
        } while ((*next++ & 0x80) != 0);
        end += run >> 2;
    } while (end <= code);
    return static_cast<CharacterClass>(run & 3);
}
'''

END = 0x110000
SPACE, WORD, PUNCTUATION = 0, 2, 3
ALIKE = {"Zs": SPACE, "Cc": SPACE, "Cf": SPACE}


def class_of(code):
    category = unicodedata.category(chr(code))
    if category in ("Cn", "Co", "Cs"):
        return None
    return ALIKE.get(category, WORD if category[0] in "LMN" else PUNCTUATION)


def runs():
    """(class, length)"""
    begin, last = 0x80, class_of(0x80)
    for code in range(0x80, END):
        found = class_of(code)
        if found not in (None, last):
            yield last, code - begin
            begin, last = code, found
    yield last, END - begin


def encode(run):
    kind, length = run
    value = length << 2 | kind
    encoded = [value & 0x7F]
    while value := value >> 7:
        encoded.insert(0, value & 0x7F | 0x80)
    return encoded


encoded = ", ".join(f"0x{byte:02X}" for run in runs() for byte in encode(run))
print(HEAD % unicodedata.unidata_version + encoded + TAIL, end="")
