// The main window: its class, its controls, and which handler answers which message.
#pragma once

#include "shell/platform.h"

#include <cstdint>

// Messages that the program posts to its own main window.
constexpr UINT k_message_start = WM_USER + 1;         // open or make the first web
constexpr UINT k_message_name_entered = WM_USER + 2;  // Enter in the cellname box
constexpr UINT k_message_hot_spot = WM_USER + 3;      // wParam: pane, lParam: position clicked
constexpr UINT k_message_recover = WM_USER + 4;       // the blocks ran out in a notification
constexpr UINT k_message_name_settled = WM_USER + 5;  // a choice in the cellname box is through
constexpr UINT k_message_activation = WM_USER - 1;

constexpr uint32_t k_start_path_max = 62;  // bytes taken of the command line

// Makes and shows the window; null when another copy runs, which then comes to the front, or when
// the system refuses.
HWND create_main_window(HINSTANCE instance, const wchar_t *command_line, int show);

LRESULT CALLBACK main_window_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

HINSTANCE program_instance();
HWND main_window();
HWND menu_bar();
HWND navigation_buttons();

// Places the navigation buttons so many pixels from the left.
void indent_navigation_buttons(int32_t indent);

// Lays the window out again as its last WM_SIZE did.
void relayout();

// The system's code when create_main_window() failed.
DWORD window_error();
