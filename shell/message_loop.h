// Start-up, the message loop and the work of every second. shell/dispatch.h has what the loop does
// with a message.
#pragma once

#include "shell/base/platform.h"

// Prepares the engine. False when there is no memory.
bool app_init();

// Makes everything that the loop needs: 0, or the exit code of a program that cannot start.
int start_program(HINSTANCE instance, const wchar_t *command_line, int show);

// Starts the program and runs it; the exit code.
int run_message_loop(HINSTANCE instance, const wchar_t *command_line, int show);

// Handles every waiting message, then the second's work when it is due. False, with the exit code,
// once WM_QUIT has come.
bool message_loop_round(int *exit_code);
