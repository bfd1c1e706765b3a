// The main window as the desktop sees it: the one that SHCreateMenuBar was called for.
#pragma once

#include <windows.h>

// Makes a window the main one: gives it its frame and first size, and sees its messages before the
// program does, until it is gone. One at a time.
void adopt_main_window(HWND window);

// The window, or null.
HWND adopted_main_window();

// Its client area as it is, or was before the window was minimised.
SIZE adopted_client_size();
