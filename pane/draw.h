// Drawing: each line of the screen is put together out of sight and then copied to the window.
#pragma once

#include "pane/pane.h"

// WM_PAINT.
void draw_pane(Pane *pane);
