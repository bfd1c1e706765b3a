// The caret and the selection, and where keys take them.
#pragma once

#include "pane/pane.h"

// Sets both, to positions of the text, and has what changed drawn.
void select_range(Pane *pane, uint32_t anchor, uint32_t caret);

// Moves the caret as a key does: with the selection or without, and into view.
void move_caret(Pane *pane, uint32_t position, bool extend);

// Going up and down keeps to where the caret is now.
void keep_x(Pane *pane);

// Up and down by lines of the screen; a page scrolls as well.
void move_by_row(Pane *pane, bool down, bool extend);
void move_by_page(Pane *pane, bool down, bool extend);

void move_by_character(Pane *pane, bool forward, bool extend);
void move_by_word(Pane *pane, bool forward, bool extend);

// To the line's first character that is no blank, or if it is there, to its beginning; to its end.
void move_to_line_start(Pane *pane, bool extend);
void move_to_line_end(Pane *pane, bool extend);

// A change of the document moves the positions behind it.
void selection_follow(Pane *pane, const Change &change);
