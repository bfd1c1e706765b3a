// Making the main window's controls, in the order in which they are stacked.
#pragma once

#include "shell/base/platform.h"

// For WM_CREATE. Destroys the window when the menu bar cannot be made.
void create_controls(HWND window);
