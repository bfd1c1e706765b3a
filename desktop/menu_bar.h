// The menu bar: a tool bar along the bottom of the main window, whose drop-down buttons open the
// pop-ups of one menu (desktop/popups.h).
#pragma once

#include <windows.h>

constexpr int k_menu_bar_height = 26;

// Makes the bar from the RCDATA and MENU resources `id`, with the images of a bitmap. Null when
// that fails. The bar is the parent's child and dies with it.
HWND menu_bar_create(HWND parent, HINSTANCE instance, UINT id, int bitmap, int image_count);

// The main window calls these. Place: along the bottom of the parent's client area.
void menu_bar_place();
void menu_bar_destroyed();

// True when the notification is the bar's own, or one about the tool tips of any tool bar, and done
// with, with the result to return.
bool menu_bar_notify(NMHDR *header, LRESULT *result);
