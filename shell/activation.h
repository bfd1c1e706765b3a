// What the shell of the handheld wants to be told about activation and its input panel.
#pragma once

#include "shell/base/platform.h"

// Clears the record; while the window is created.
void activation_reset();

LRESULT on_setting_change(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
LRESULT on_activate(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

// k_message_activation: the window is to be activated as soon as may be.
LRESULT on_activation_request(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
