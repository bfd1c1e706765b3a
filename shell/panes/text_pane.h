// The text pane and the console pane as windows, and the transfer of text between the text pane and
// the current cell. store_text_pane(), refresh_current_view(), refresh_views(), selected_text(),
// hide_text_caret(), console_clear() and console_insert() are those of core/host_view.h.
#pragma once

#include "shell/platform.h"

#include "core/block_arena.h"

// Make the panes; each stays away without SciLexer.dll.
void text_pane_create(HWND parent);
void console_pane_create(HWND parent);

HWND text_pane();
HWND console_pane();

// The zoom option, to both panes.
void apply_zoom();

// The cell whose text the text pane holds; 0 is none.
CellHandle text_pane_cell();

// The text pane reports a change of its text.
void text_pane_changed();
