// The text pane and the console pane as windows, and the transfer of text between the text pane and
// the current cell. store_text_pane() and hide_text_caret() of core/host_view.h are defined here;
// shell/panes/scintilla.h has the handles.
#pragma once

#include "shell/base/platform.h"

#include "core/block_arena.h"

// Make the panes; each stays away without SciLexer.dll.
void text_pane_create(HWND parent);
void console_pane_create(HWND parent);

// The zoom option, to both panes.
void apply_zoom();

// Shows the current cell's text in the text pane. A pane that was modified while it showed this
// very cell is stored first, and keeps its text when that does not fit.
void show_cell_text();

// The cell whose text the text pane holds; 0 is none.
CellHandle text_pane_cell();

// What the pane holds belongs to no cell any more, and is dropped when the next one is shown.
void text_pane_forget_cell();

// The text pane reports a change of its text.
void text_pane_changed();
