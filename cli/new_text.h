// The text that `qvx set` is to store, from the command line, a file or standard input.
#pragma once

#include "cli/command_line.h"
#include "core/block_arena.h"

#include <cstdint>

// Takes the text in; an exit status, after saying what is wrong with it. A text holds no NUL
// characters and no more than the arena.
int new_text_take(const CommandLine &line);

const char *new_text_bytes();
uint32_t new_text_size();

// True when a text is this one already, as it is when it comes back from a file.
bool new_text_equals(BlockHandle head);

// The line feeds with no carriage return before them: a web file gives them back with one.
uint32_t new_text_bare_line_feeds();
