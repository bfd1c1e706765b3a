// Options as texts, the way a web file has them (web/options.def says which have words).
#pragma once

#include "core/block_arena.h"
#include "web/options.h"

// The option's value. The string stands until the next call.
const char *option_value_text(OptionId id);

// Sets the option from an element's text. Words are compared as cellnames are; a word that the
// option does not know and a number outside 16 bits change nothing.
void option_apply_text(OptionId id, BlockHandle text);

// A number by the current number format, in a buffer that the next call overwrites.
const char *option_number_text(double value);
