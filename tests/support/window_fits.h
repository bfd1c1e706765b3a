// Where controls stand, and what a dialog or a page of one looks like on the handheld's screen.
#pragma once

#include <windows.h>

// Where a control stands in its window, or in any other.
RECT place_in(HWND window, HWND control);

// Expects that labels and buttons show their texts in full, broken into lines where that helps, and
// that no control covers another or reaches over the window's edge. Boxes around a group of buttons
// stand around what they hold.
void expect_all_fits(HWND window);
