// The two bars of buttons: the menu bar along the bottom, which the system's shell makes, and the
// navigation buttons beside the cellname box.
#pragma once

#include "shell/base/platform.h"

#include <cstdint>

// False when the system refuses.
bool menu_bar_make(HWND parent);

HWND menu_bar();

// `indent` as below.
void navigation_buttons_create(HWND parent, int32_t indent);

HWND navigation_buttons();

// Places the navigation buttons so many pixels from the left.
void indent_navigation_buttons(int32_t indent);
