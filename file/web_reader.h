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
// "home" with the options read so far. A file with tags but no end mark is read as far as it goes,
// and "The end of this file is missing" is shown. The views are not refreshed.
int web_read(FILE *file);

// True when the last web_read() took in every word that the file has up to its end mark. False when
// it failed; when the end mark is missing, unless the file is blank; when text stood outside of the
// elements, in one that was not closed or by another tag, in a name or entity too long to keep or
// in a field that the file gives again. Such a file must not be written over without keeping it.
bool web_read_was_whole();

// True when the last web_read() failed: at a bad cellname (no cell of the file is in the web), at a
// read error (the web holds what came before it) or for want of blocks.
bool web_read_failed();

// The next tag: its index, negative for a closing tag, 0 at the end of the web. The token text then
// holds the characters since the previous tag.
int web_next_token();

// Applies the closing tag to the token text; 0, or -44.
int web_apply_close_tag(int tag);

// The next byte of the file, 0 at its end; a bare LF comes as CR, LF.
int web_in_byte();

// The first cell that has been read and waits for the end of the file; the next one is its right
// child. 0 when there is none.
CellHandle web_read_first_staged();

// Gives back staged cells and the token text. Part of recovery.
void web_read_recover();
