// What the engine asks of the program around it, two of three: the text pane, the cell list, the
// console, the caption. Each program defines these functions and the linker joins them:
//
//   Quorvane.exe   shell/panes/text_pane.cpp (store_text_pane, hide_text_caret),
//                  shell/panes/selection.cpp (selected_text), shell/panes/styles.cpp
//                  (configure_panes, refresh_cellname_list), shell/panes/console_pane.cpp,
//                  shell/cell_list.cpp, shell/views.cpp (show_cell_list, refresh_current_view,
//                  refresh_views), shell/main_window.cpp (set_window_title)
//   qvx, bench/    cli/host_qvx.cpp (selected_text and the console), the rest cli/no_view.cpp
//   engine tests   tests/engine/recorder.cpp
//
// Strings are 8-bit (UTF-8 where they leave the web), zero-terminated, and belong to the caller for
// the length of the call unless a function says otherwise.
//
// None of these functions allocates from the arena except where it says so; what allocates may
// offer to save and exit, and so end the program. None calls back into what the engine is doing.
#pragma once

#include "core/block_arena.h"

#include <cstdint>

// ---- The text pane ------------------------------------------------------------------------------

// With mode 1: takes the text pane's text into the current cell when the pane shows that cell and
// was modified, and keeps the pane's selection and first line in the cell's view state. Any other
// mode stores nothing. Allocates; leaves through the recovery point when the text does not fit, and
// the pane then still holds it and counts as modified. Returns the current cell.
CellHandle store_text_pane(int mode);

// Shows the current cell's name in the cellname box and its text in the text pane. The web changed
// flag keeps its value. A pane that was modified while it showed this very cell is stored first,
// and keeps its text when that does not fit; a pane that shows another cell is loaded anew, what it
// held being stored or lost by now. Allocates when it stores, and may take a block for the cell's
// view state, if one is free; leaves through the recovery point only when the program has no memory
// left to take the pane's text out.
void refresh_current_view();

// Brings every view in line with a web that was just made or read: pane styles and zoom, cell list,
// current cell. What the pane held is dropped. May take a block for the cell's view state.
void refresh_views();

// The text selected in the active pane; "" when nothing is selected or it cannot be copied (the
// host has then raised the offer to save and exit). The host keeps the buffer until the next call
// or selected_text_free().
const char *selected_text();
void selected_text_free();

// Takes the caret away until the pane takes the focus again.
void hide_text_caret();

// ---- Start-up, links and caption ----------------------------------------------------------------

// Sets up both text panes (styles and cellname list), once, at start-up.
void configure_panes();

// Hands the names of all live cells to the panes, which draw them as links.
void refresh_cellname_list();

// Shows the cell list with its tab selected, after storing the text pane unless output is under
// way. Allocates for that, under a recovery point of its own: a text that does not fit stays in the
// pane, and "OUT OF MEMORY" is shown.
void show_cell_list();

void set_window_title(const char *title);

// ---- The cell list ------------------------------------------------------------------------------
// One item for each live cell. The host keeps the items; the cell record keeps a token for its own
// (cell_list_item() in web/record.h). Token 0 is no item; an unknown token selects and removes
// nothing.

using ListItem = uint32_t;

// Fills the list, which was cleared before, with an item for every live cell, stores the tokens in
// the records and selects the current cell. An item that a command has added since goes.
void cell_list_fill();

// Inserts an item for one cell that has none, stores its token in the record and selects the
// current cell.
void cell_list_add(CellHandle cell);

// Selects the current cell's item and scrolls to it. Without one the selection stays.
void cell_list_select_current();

// Takes all items out. The records keep their tokens, which then are unknown.
void cell_list_clear();

// Takes one item out; the record keeps its token.
void cell_list_remove_item(ListItem item);

// ---- The console --------------------------------------------------------------------------------

void console_clear();

constexpr uint32_t k_console_insert_max = 4096;  // bytes at a time

// Inserts `count` bytes, at most k_console_insert_max, at byte position `position` and brings the
// caret behind them; at the end where the console has become shorter meanwhile. A report inserts
// where its last insertion ended, from 0 after console_clear(). What was inserted may show later,
// at the latest with output_ended().
void console_insert(uint32_t position, const char *bytes, uint32_t count);
