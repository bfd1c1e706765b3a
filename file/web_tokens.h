// The tokenizer: a web file's bytes as tags and the text between them, for the reader and whoever
// watches it.
#pragma once

#include "core/block_arena.h"
#include "file/read_finding.h"

#include <cstdio>

constexpr uint32_t k_markup_name_max = 31;  // characters of a tag's or an entity's name that count

// Begins a read of a file that is open at its start.
void tokens_begin(FILE *file);

// Releases the token text and lets go of the file.
void tokens_end();

// The next tag: its index, negative for a closing tag, 0 at the end of the web. The token text then
// holds the characters since the previous tag.
int web_next_token();

// The next byte of the file, 0 at its end; a bare LF comes as CR, LF.
int web_in_byte();

// The next closing tag's index, 0 at the end of the web. Opening tags end the text before them, and
// that text is dropped.
int token_next_closing();

// The last opening tag before it, since the closing tag before that; 0 when there was none.
int token_opened();

// The characters since the previous tag; the tokenizer's until it is taken.
BlockHandle token_text();
BlockHandle token_take();

// True when the last tag was a closing one.
bool token_is_closing();

// True when the file was read to its end.
bool tokens_ended();

// True when the input ended, or a NUL stood in it, before the web's end mark; the next one for an
// input that had any tag of a web until then.
bool tokens_ran_out();
bool tokens_had_tag();

// True when the file's reading failed.
bool tokens_failed();

// Notes that the token text goes nowhere, which is a loss unless it is blank.
void tokens_drop_text();

// Notes that something else of the file goes nowhere.
void tokens_note_loss();

bool tokens_lost_something();

// The line reached, from 1.
uint32_t tokens_line();

// Who is told what comes, apart from what becomes of it (file/read_watch.cpp).
struct ReadWatch {
    void (*found)(ReadFinding finding, const char *text);
    void (*begin)();
    void (*opening)(int tag);  // the token text is dropped
    void (*closing)(int tag);  // not applied yet; 0 is the end of the web
};

// Sets the watch; null is none.
void tokens_set_watch(const ReadWatch *watch);
const ReadWatch *tokens_watch();
