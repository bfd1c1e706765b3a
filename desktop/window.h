// The main window as desktop/ sees it: hooked by SHCreateMenuBar, forgotten when it is destroyed.
#pragma once

#include <windows.h>

// Gives the window its frame and first size, and hooks it. Called once a window.
void window_hook(HWND window);

// The hooked window, or null.
HWND window_hooked();

// The client area as it is, or was before the window was minimised.
SIZE window_client_size();

// What task bars leave free of the screen that shows most of `window`.
RECT window_free_area(HWND window);

// Has the program open `path`, soon. False when the window takes no input now.
bool window_open_later(const wchar_t *path);

// True while a dropped file may be opened.
bool window_takes_files();
