// The menu that a right click opens, or a pen that is held.
#pragma once

#include "pane/pane.h"

// WM_CONTEXTMENU, with a point of the screen; (-1, -1) for the caret.
void menu_open(Pane *pane, POINT at);
