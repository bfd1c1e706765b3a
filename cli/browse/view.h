// The view of core/host_view.h that the terminal shows.
#pragma once

#include "cli/host_view_qvx.h"

extern const HostView k_browse_view;

// Runs a piece of the engine's work under a recovery point of its own. When the blocks run out the
// program is brought back, the user sees "OUT OF MEMORY", and the result is false.
bool view_run(void (*body)());

// What the user said to the last question whether to save: 'y', 'n' or 'c' for neither.
char view_save_answer();

// Finds the links of both texts anew, after cells have come or gone.
void view_find_links();
