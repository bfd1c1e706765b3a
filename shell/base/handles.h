// The program's instance and its one main window, and the messages that the rooms post to it.
// shell/main_window.cpp sets the handles and handles the messages.
#pragma once

#include "shell/base/platform.h"

constexpr UINT k_message_start = WM_USER + 1;         // open or make the first web
constexpr UINT k_message_name_entered = WM_USER + 2;  // Enter in the cellname box
constexpr UINT k_message_hot_spot = WM_USER + 3;      // wParam: pane, lParam: position clicked
constexpr UINT k_message_recover = WM_USER + 4;       // the blocks ran out in a notification
constexpr UINT k_message_name_settled = WM_USER + 5;  // a choice in the cellname box is through
constexpr UINT k_message_activation = WM_USER - 1;

HINSTANCE program_instance();
void set_program_instance(HINSTANCE instance);

// From WM_CREATE on; null before the first.
HWND main_window();
void set_main_window(HWND window);
