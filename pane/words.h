// Words of a text: runs of characters of one class.
#pragma once

#include "pane/gap.h"

// From a position to where a run ends or begins. `only_words` stops at the first character that is
// of no word; otherwise the first character says what the run is of.
uint32_t word_end(const Gap *text, uint32_t position, bool only_words);
uint32_t word_start(const Gap *text, uint32_t position, bool only_words);

// Where Ctrl and an arrow go: to the beginning of the next word, or of the one before.
uint32_t next_word(const Gap *text, uint32_t position);
uint32_t previous_word(const Gap *text, uint32_t position);
