// How large a desktop's window is, and where there is room for it. All in pixels; client areas with
// the menu bar.
#pragma once

#include <windows.h>

// Gives the window its first client area (desktop/frame.h) and keeps all of it on the screen where
// it fits.
void set_first_size(HWND window);

// For WM_GETMINMAXINFO: the smallest size that the user may give the window.
void limit_size(HWND window, MINMAXINFO *info);

// What task bars leave free of the screen that shows most of `window`.
RECT free_area_around(HWND window);
