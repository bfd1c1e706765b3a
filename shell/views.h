// The three views behind the tabs: showing one, and bringing what they show in line with the web.
// Which is shown, and which pane has the focus, is in shell/base/focus.h; show_cell_list(),
// refresh_current_view() and refresh_views() of core/host_view.h are defined here.
#pragma once

#include "shell/base/focus.h"

// Where the tabs stand.
enum TabIndex : int {
    k_tab_list = 0,
    k_tab_text = 1,
    k_tab_console = 2,
};

// Stores the text pane and shows a view, which gets the focus.
void show_view(ViewIndex view);

// The same with its tab selected.
void show_console();

// The view behind a tab, by the tab's position.
ViewIndex view_of_tab(int tab);
