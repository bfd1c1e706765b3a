// The mouse, or the pen: clicks, selecting and dragging what is selected.
#pragma once

#include "pane/pane.h"

void mouse_down(Pane *pane, POINT at);
void mouse_moved(Pane *pane, POINT at);
void mouse_up(Pane *pane, POINT at);

// The capture has gone to somebody else.
void mouse_lost(Pane *pane);

// WM_TIMER: a press that is held for long, or that has left the window.
void mouse_timer(Pane *pane, WPARAM timer);

// Sets the pointer for where it is; false when that is not the text.
bool mouse_set_pointer(Pane *pane);
