// A pane that is not shown has no size, and would break its text behind every character. It does
// not wrap while it is collapsed, and comes back as it was left.
#pragma once

#include "shell/platform.h"

void pane_collapsing(HWND pane);
void pane_expanded(HWND pane);

// Brings a pane's caret into view, now or as soon as the pane is expanded.
void pane_scroll_to_caret(HWND pane);
