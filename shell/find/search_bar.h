// The search bar as the dialogs that work on it see it; shell/dialogs/dialogs.h has what others
// need.
#pragma once

#include "shell/platform.h"

// Says whether the layout keeps the band for the bar, and has the window laid out again.
void set_search_in_progress(bool in_progress);

void open_search_bar();

// The open bar's box shows the option again.
void search_bar_show_case();
