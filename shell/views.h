// The three views behind the tabs, the panes that can have the focus, and which of them has it.
#pragma once

#include "shell/platform.h"

#include <cstdint>

enum PaneIndex : uint32_t {
    k_pane_box = 0,  // cellname box
    k_pane_text = 1,
    k_pane_list = 2,
    k_pane_tabs = 3,
    k_pane_console = 4,
    k_pane_count = 5,
};

enum ViewIndex : uint32_t {
    k_view_list = 0,
    k_view_text = 1,
    k_view_console = 3,
};

// Forgets every window and shows the cell list's view; before the controls are made.
void views_reset();

// Registering the cellname box also limits its text.
void register_pane(PaneIndex pane, HWND window);

// The window of a pane; that of the cellname box for an index outside the table.
HWND pane_window(uint32_t pane);

// The pane that took the focus last.
PaneIndex active_pane();
HWND active_pane_window();

// True when the active pane is one of the two text panes.
bool active_pane_is_text();

// A pane reports that it took the focus.
void set_active_pane(PaneIndex pane);

// Gives the focus to the search bar when it is open, else to the active pane. A control of the bar
// that has it keeps it. A pane that the view does not show never gets it: the view's own does.
void focus_active_pane();

// The main window has the focus: gives it back to the pane, or the search bar, that had it last.
void restore_focus();

ViewIndex current_view();
ViewIndex previous_view();

// Stores the text pane and shows a view, which gets the focus.
void show_view(ViewIndex view);

// The same with its tab selected.
void show_console();

// The view behind a tab, by the tab's position.
ViewIndex view_of_tab(int tab);

// Which pane the Tab key goes to from `pane` while `view` is shown.
PaneIndex pane_after(PaneIndex pane, ViewIndex view);

// The Tab key.
void cycle_pane();
