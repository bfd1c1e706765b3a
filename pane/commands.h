// The commands that keys and menus have names for: SCI_... messages without parameters.
#pragma once

#include "pane/pane.h"

// Does a command; false when there is none of that number.
bool run_command(Pane *pane, UINT command);

// Sets the points that text is drawn larger, and says so.
void set_zoom(Pane *pane, int zoom);
