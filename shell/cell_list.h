// The cell list: a tree view with one item for each live cell. What the engine asks of it is in
// core/host_view.h; an item's token is its cell's handle.
#pragma once

#include "shell/platform.h"

void cell_list_create(HWND parent);

// TVN_SELCHANGED: goes to the cell that the user chose.
void cell_list_selection_changed(const NMTREEVIEWW *change);
