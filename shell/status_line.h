// The status line: a resting text, over which short messages appear for five seconds each. Showing
// them is show_status_message() and set_resting_status() of core/host_messages.h.
#pragma once

#include "shell/platform.h"

#include <cstdint>

constexpr uint32_t k_status_max = 127;         // characters of a text
constexpr DWORD k_status_milliseconds = 5000;  // that a message stays

void status_line_create(HWND parent);

HWND status_line();

// Puts the resting text back once a message has been up long enough.
void status_timeout_check();
