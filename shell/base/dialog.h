// Running dialogs from the program's templates, all owned by the main window.
#pragma once

#include "shell/base/platform.h"

// Runs a modal dialog from its template by name; the result of EndDialog(), or -1.
INT_PTR run_dialog(const wchar_t *name, DLGPROC procedure);

// Makes a modeless one; null when that fails.
HWND open_modeless(const wchar_t *name, DLGPROC procedure);

// For WM_INITDIALOG: how the system's shell is to place the dialog (the flags of SHInitDialog).
// A handheld gives one that it sizes the whole screen, a desktop puts it over the middle of the
// main window.
constexpr DWORD k_dialog_plain = 1;        // with OK, not sized
constexpr DWORD k_dialog_box = 2;          // sized, without OK
constexpr DWORD k_dialog_full_screen = 3;  // sized, with OK
void init_dialog(HWND dialog, DWORD flags);
