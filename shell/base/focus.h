// Who has the focus, and who gets it back: the one owner of that question.
//
// The main window's panes are registered here, and so is the search bar while it is open. One view
// is shown, and with it one pane; the cellname box and the tabs are always there. The active pane
// is the one that took the focus last: the box or the pane of the view. A pane whose control was
// given the focus by the system says so (set_active_pane()); whoever wants to move it to another
// pane asks here, and only the cellname box takes it for its own field. Commands act on the active
// pane, also while a menu or the search bar has the focus.
#pragma once

#include "shell/base/platform.h"

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
void focus_reset();

// ---- The windows --------------------------------------------------------------------------------

// Registering the cellname box also limits its text.
void register_pane(PaneIndex pane, HWND window);

// The window of a pane; that of the cellname box for an index outside the table.
HWND pane_window(uint32_t pane);

// The search bar that has been opened; null when it is closed.
void register_search_bar(HWND bar);
HWND search_bar();

// ---- The view that is shown ---------------------------------------------------------------------
// shell/views.h changes it.

ViewIndex current_view();
ViewIndex previous_view();
void set_current_view(ViewIndex view);

// ---- The active pane ----------------------------------------------------------------------------

PaneIndex active_pane();
HWND active_pane_window();

// True when the active pane is one of the two text panes.
bool active_pane_is_text();

// A pane reports that it took the focus.
void set_active_pane(PaneIndex pane);

// True while the system's focus is in a pane's window.
bool pane_has_focus(PaneIndex pane);

// ---- Moving the focus ---------------------------------------------------------------------------

// Makes a pane the active one and gives it the focus, whether the search bar is open or not.
void focus_pane(PaneIndex pane);

// Gives the focus to the search bar when it is open, else to the active pane. A control of the bar
// that has it keeps it. A pane that the view does not show never gets it: the view's own does.
void focus_active_pane();

// The main window has the focus: gives it back to the pane, or the search bar, that had it last.
void restore_focus();

// Which pane the Tab key goes to from `pane` while `view` is shown.
PaneIndex pane_after(PaneIndex pane, ViewIndex view);

// The Tab key.
void cycle_pane();
