// Where the text stands in the window: lines as they are broken, and from a position to a point and
// back. Breaking is put off until somebody asks, and then done for the lines that have changed.
//
// Whoever asks calls layout_prepare() first; the functions of this header do.
#pragma once

#include "pane/pane.h"

void layout_init(Layout *layout);
void layout_free(Layout *layout);

void layout_set_wrap(Pane *pane, bool wrap);

// The lines from one up to another have to be broken anew; or all of them, in their present width.
void layout_lines_changed(Pane *pane, uint32_t from, uint32_t to);
void layout_all_changed(Pane *pane);

// The document has changed.
void layout_follow(Pane *pane, const Change &change);

// Breaks what has to be broken, with the styles as they are. The line of the text that is at the
// top stays there.
void layout_prepare(Pane *pane);

// The same with the right styles up to a position. Styles are asked for only where text is drawn,
// or somebody wants to know exactly: styling a long text takes the parent longer than breaking it.
void layout_prepare_styled(Pane *pane, uint32_t end);

// The top has moved.
void layout_note_top(Pane *pane);

uint32_t layout_line_count(Pane *pane);  // of the screen

// A line's parts, one for each line of the screen; good until the next call for another line.
const Breaks *layout_breaks(Pane *pane, uint32_t line);
LineRange layout_range(const Pane *pane, uint32_t line);

// The line of the screen that a position is on, and the position's x in the window.
uint32_t layout_row_of(Pane *pane, uint32_t position);
int layout_x_of(Pane *pane, uint32_t position);
int layout_text_left(const Pane *pane);

// A line of the text, and which part of it.
struct Row {
    uint32_t line;
    uint32_t part;
};

Row layout_row(Pane *pane, uint32_t row);

// Where the next line of the screen begins, or the text ends.
uint32_t layout_row_end(Pane *pane, uint32_t row);

// The position nearest to an x on a line of the screen; or in front of the character that is there.
enum class Near : uint8_t { edge, character };
uint32_t layout_position_in_row(Pane *pane, uint32_t row, int x, Near which);

// The position nearest to a point of the window, the first or the last for a point outside.
uint32_t layout_position_at(Pane *pane, POINT at, Near which);

// The line of the text that a point is on; how many there are for a point below them.
uint32_t layout_line_at(Pane *pane, POINT at);

// Whether a point is on a character.
bool layout_hits_character(Pane *pane, POINT at);
