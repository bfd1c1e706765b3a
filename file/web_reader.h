// Reads web files: a flat tokenizer that forgives everything but a bad cellname.
//
// Reading is one pass. Options take effect at their closing tags; cells are staged (as node blocks
// outside the index) and take effect together at the end, so a read that fails leaves no part of
// them. One read at a time.
#pragma once

#include "core/block_arena.h"

#include <cstdio>

// Replaces the web by what the file holds; the file is open at its start and stays the caller's.
// Returns 0, or -44 for a bad cellname after showing "Bad Input File"; the web is then an empty
// "home" with the options read so far. The views are not refreshed.
int web_read(FILE *file);

// True when the last web_read() met a read error (the web holds what came before it).
bool web_read_was_cut();

// The next tag: its index, negative for a closing tag, 0 at the end of the web. The token text then
// holds the characters since the previous tag.
int web_next_token();

// Applies the closing tag to the token text; 0, or -44.
int web_apply_close_tag(int tag);

// The next byte of the file, 0 at its end; a bare LF comes as CR, LF.
int web_in_byte();

// Gives back staged cells and the token text. Part of recovery.
void web_read_recover();

// ---- What a file holds that reading would lose or change ----------------------------------------

enum class ReadFinding {
    unknown_tag,
    unknown_entity,
    bad_name,
    long_name,
    duplicate_name,
    bytes_after_end
};

// Called while reading, when set, at the places where the reader drops or changes something; for
// `qvx check`. `line` counts from 1; `text` is the tag, entity or name in question. Null takes the
// observer off.
using ReadObserver = void (*)(ReadFinding finding, uint32_t line, const char *text);
void web_read_observe(ReadObserver observer);
