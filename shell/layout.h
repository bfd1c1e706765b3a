// Where everything stands in the main window: a table of 28 numbers, in pixels of the client area.
#pragma once

#include "shell/base/focus.h"

#include <cstdint>

enum LayoutSlot : int32_t {
    k_layout_width = 0,
    k_layout_height = 1,
    k_layout_box_top = 2,
    k_layout_box_left = 3,
    k_layout_box_width = 4,
    k_layout_box_field_height = 5,  // nothing is placed by it
    k_layout_box_height = 6,        // with its list dropped down
    k_layout_bar_top = 7,
    k_layout_bar_left = 8,
    k_layout_bar_width = 9,
    k_layout_bar_height = 10,  // of the whole band at the top
    k_layout_bar_indent = 11,
    k_layout_search_band = 12,
    k_layout_tabs_top = 13,
    k_layout_tabs_left = 14,
    k_layout_tabs_width = 15,
    k_layout_tabs_height = 16,
    k_layout_pane_and_tabs_height = 17,  // nothing is placed by it
    k_layout_status_top = 18,
    k_layout_status_left = 19,
    k_layout_status_width = 20,
    k_layout_status_height = 21,
    k_layout_pane_top = 22,
    k_layout_pane_left = 23,
    k_layout_pane_width = 24,
    k_layout_pane_height = 25,
    k_layout_unused = 27,  // nothing is placed by it; 26 is never set
    k_layout_slots = 28,
};

struct LayoutTable {
    int32_t slots[k_layout_slots];
};

struct Area {
    int32_t width;
    int32_t height;
};

// Fills a table for a client area; `search_band` leaves room for the search bar above the panes.
void layout_fill(LayoutTable *table, int32_t width, int32_t height, bool search_band);

// Fills the table in force; the search bar has its band as long as a search is in progress.
void compute_layout(int32_t width, int32_t height);

// A slot of the table in force; 0 for an index outside it.
int32_t layout_slot(int32_t index);

// For WM_SIZE, whose parameters are kept: computes and applies the layout of the visible area.
void lay_out(WPARAM size_type, LPARAM size);

// Lays the window out again as its last WM_SIZE did.
void relayout();

// Places every control by the table in force and the view that is shown.
void apply_layout();

// Places the three panes for a view: the one shown on the pane area, the others collapsed to
// nothing.
void place_panes(ViewIndex view);

// What the input panel and the menu bar leave of the screen.
Area visible_area();
