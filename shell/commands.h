// What WM_COMMAND does: one table of commands and their handlers.
#pragma once

#include "shell/base/platform.h"

// Runs a command; nothing for one that the table does not have. `notification` is the code of a
// control that tells something, whose identifier is then the command.
void run_command(WORD command, WORD notification);

// A pane was zoomed by its own means, the wheel or a key: the zoom option follows, and with it the
// other pane.
void pane_zoomed(HWND pane);

// File Open with the path given. Allocates; may leave through the recovery point.
void open_web_path(const char *path);
