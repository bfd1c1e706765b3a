// Changes of the text: by messages, by keys, by characters that are typed.
#pragma once

#include "pane/pane.h"

// Puts bytes in or takes them out, within the text's limits. False without memory.
bool edit_insert(Pane *pane, uint32_t position, const char *bytes, uint32_t length);
bool edit_remove(Pane *pane, uint32_t start, uint32_t end);

// The document tells of a change (DocumentEvents).
void edit_changed(void *owner, const Change &change);
void edit_save_point(void *owner, bool reached);

// Loads a text, which can be undone.
void edit_set_text(Pane *pane, const char *bytes, uint32_t length);

// Puts bytes in place of the selection, with the caret behind them.
void edit_replace_selection(Pane *pane, const char *bytes, uint32_t length);

// In place of the target, which then is what came in.
void edit_replace_target(Pane *pane, const char *bytes, uint32_t length);

// What was typed: one character, or what an input method made.
void edit_type(Pane *pane, const char *bytes, uint32_t length);
void edit_new_line(Pane *pane);

// The keys that take out: the selection, else the character in front of the caret or behind it.
void edit_backspace(Pane *pane);
void edit_delete(Pane *pane);

// From the caret back to a position or up to one, whatever is selected.
void edit_delete_back_to(Pane *pane, uint32_t start);
void edit_delete_up_to(Pane *pane, uint32_t end);

// Without the selection nothing happens.
void edit_clear_selection(Pane *pane);

void edit_undo(Pane *pane);
void edit_redo(Pane *pane);

// Moves the selected bytes to another place, as one step; they stay selected.
void edit_move_selection(Pane *pane, uint32_t to, bool copy);
