// What the engine asks of the program around it, two of three: the text pane, the cell list, the
// console, the caption. core/host_messages.h says how such a function is found.
//
// Strings are 8-bit (UTF-8 where they leave the web), zero-terminated, and belong to the caller for
// the length of the call unless a function says otherwise.
// None of these functions may allocate from the arena except where it says so.
#pragma once

#include "core/block_arena.h"

#include <cstdint>

// ---- The current cell's view --------------------------------------------------------------------

// With mode 1: takes the text pane's text into the current cell when the pane was modified, and
// keeps the pane's selection and first line in the cell's view state. Any other mode stores
// nothing. Allocates; may leave through the recovery point, and the pane then still holds the text.
// Returns the current cell.
CellHandle store_text_pane(int mode);

// Shows the current cell's name in the cellname box and its text in the text pane. The web changed
// flag keeps its value. A pane that was modified while it showed this very cell is stored first,
// and keeps its text when that does not fit; a pane that shows another cell is loaded anew, what it
// held being stored or lost by now. May take a block for the cell's view state, if one is free.
void refresh_current_view();

// Brings every view in line with a web that was just made or read: pane styles and zoom, cell list,
// current cell. What the pane held is dropped. May take a block, like refresh_current_view().
void refresh_views();

// The text selected in the active pane; "" when nothing is selected or it cannot be copied (the
// host has then raised the offer to save and exit). The host keeps the buffer until the next call
// or selected_text_free().
const char *selected_text();
void selected_text_free();

// ---- Start-up and caption -----------------------------------------------------------------------

// Sets up both text panes (styles and cellname list), once, at start-up.
void configure_panes();

// Hands the names of all live cells to the panes, which draw them as links.
void refresh_cellname_list();

// Shows the cell list with its tab selected.
void show_cell_list();

void set_window_title(const char *title);

// Until the pane takes the focus again.
void hide_text_caret();

// ---- The cell list ------------------------------------------------------------------------------
// One item for each live cell. The host keeps the items; the cell record keeps a token for its own
// (cell_list_item() in web/cells.h). Token 0 is no item; an unknown token selects and removes
// nothing.

using ListItem = uint32_t;

ListItem cell_list_insert_item(CellHandle cell);

// Inserts an item for every live cell, stores the tokens in the records, selects the current cell.
void cell_list_fill();

// Inserts an item for one cell, stores its token in the record and selects the current cell.
void cell_list_add(CellHandle cell);

void cell_list_select_current();
void cell_list_clear();
void cell_list_remove_item(ListItem item);

// ---- The console --------------------------------------------------------------------------------

void console_clear();

// Inserts `count` bytes at byte position `position` and brings the caret behind them.
void console_insert(uint32_t position, const char *bytes, uint32_t count);
