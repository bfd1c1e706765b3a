// Between the Replace dialog and the search bar.
#pragma once

#include "shell/platform.h"

// Says whether the layout keeps the band for the bar, and has the window laid out again.
void set_search_in_progress(bool in_progress);

void open_search_bar();
