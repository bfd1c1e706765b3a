// The pop-ups behind the menu bar's buttons, and the walk from one to the next.
#pragma once

#include <windows.h>

constexpr int k_buttons_max = 16;
constexpr WORD k_no_popup = 0xFFFF;

// Takes the menu over, whose sub-menus are the pop-ups; the bar has no button yet.
void popups_start(HWND bar, HMENU menu);

// One more button at the right, with the index of its pop-up in the menu, or k_no_popup.
void popups_add_button(WORD popup);

// The bar is gone, perhaps while a pop-up is open.
void popups_end();

HMENU popups_menu();

// The pop-up of a button; null for a button without one, and for none.
HMENU popup_of(int button);

// The button whose pop-up is open, or -1.
int popups_open_button();

// Opens a button's pop-up, and others as the user walks along the bar; returns when the last one is
// closed. The chosen command is posted to the bar's parent by the system.
void popups_run(int button);

// The same from the first pop-up on. False when there is none.
bool popups_run_first();

// For WM_MENUSELECT.
void popups_item_selected(WPARAM wparam, LPARAM lparam);
