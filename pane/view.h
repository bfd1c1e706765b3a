// What part of the text the window shows: scrolling, the scroll bars, and the caret on the screen.
#pragma once

#include "pane/pane.h"

// Lines of the screen that are seen whole; at least one.
uint32_t view_lines(const Pane *pane);

// Lines that a page is scrolled by: one stays in sight.
int view_page(const Pane *pane);

// Puts a line of the screen at the top, as far as there are so many.
void view_scroll_to(Pane *pane, int top);

// The same in the midst of a change, when lines are not broken anew yet.
void view_keep_top(Pane *pane, int top);

// As far down as can be scrolled.
int view_last_top(Pane *pane);

// Scrolls as little as the policy allows until the caret is seen.
void view_show_caret(Pane *pane);

// The scroll bars follow what they stand for.
void view_update_bars(Pane *pane);

// The horizontal one alone, without breaking any line: it goes as soon as lines are broken, so that
// the rows that are on the screen are counted without it.
void view_update_side_bar(const Pane *pane);

// WM_VSCROLL, WM_HSCROLL; WM_MOUSEWHEEL with what it turned.
void view_on_vertical_bar(Pane *pane, int code);
void view_on_horizontal_bar(Pane *pane, int code);
void view_on_wheel(Pane *pane, int turned);

// The client area has a size.
void view_on_size(Pane *pane, int width, int height);

// The system's caret: made when the pane gets the focus, put where it belongs whenever the pane is
// drawn, because only then the lines are known anyway.
void view_make_caret(Pane *pane);
void view_drop_caret(Pane *pane);
void view_place_caret(Pane *pane);

// Has the caret placed, which needs something to draw.
void view_caret_moved(const Pane *pane);

// Has lines of the screen drawn, from the one of a position to that of another.
void view_invalidate(Pane *pane, uint32_t from, uint32_t to);
