// Making the main window's controls. menu_bar(), navigation_buttons() and
// indent_navigation_buttons() of shell/main_window.h are defined here.
#pragma once

#include "shell/platform.h"

// For WM_CREATE. Destroys the window when the menu bar cannot be made.
void create_controls(HWND window);
