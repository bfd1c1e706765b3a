// The tab control along the bottom, drawn here: neither the system's own look nor its themes fit
// tabs of 20 pixels, whose letters they set upon the line below.
#pragma once

#include <windows.h>

// Takes the drawing of a tab control over.
void tabs_hook(HWND window);
