// The main window: its class, its start, and which handler answers which message. Its handle is in
// shell/base/handles.h.
#pragma once

#include "shell/base/platform.h"

#include <cstdint>

constexpr uint32_t k_start_path_max = 62;  // bytes taken of the command line

// Makes and shows the window; null when another copy runs, which then comes to the front, or when
// the system refuses.
HWND create_main_window(HINSTANCE instance, const wchar_t *command_line, int show);

LRESULT CALLBACK main_window_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
