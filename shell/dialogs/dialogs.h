// The dialogs. Each is modal over the main window, except the search bar, which stays open above
// the panes.
#pragma once

#include "shell/platform.h"

// ---- Running dialogs ----------------------------------------------------------------------------

// Runs a dialog from its template by name; the result of EndDialog(), or -1.
INT_PTR run_dialog(const wchar_t *name, DLGPROC procedure);

// Makes a modeless one, owned by the main window; null when that fails.
HWND open_modeless(const wchar_t *name, DLGPROC procedure);

// For WM_INITDIALOG; `flags` are those of SHInitDialog.
constexpr DWORD k_dialog_full_screen = 3;  // with OK in its title
constexpr DWORD k_dialog_plain = 1;
constexpr DWORD k_dialog_box = 2;  // full-screen, without OK
void init_dialog(HWND dialog, DWORD flags);

// ---- The dialogs --------------------------------------------------------------------------------
// ask_cellname() of core/host_messages.h is one more.

void open_about_box();

// True when the user closed it with OK: the zoom option then has the factor chosen.
bool open_zoom_dialog();

// Asks what to search for and opens the search bar. Does nothing while either is open.
void open_replace_dialog();

// The open search bar, or null. It takes part in the message loop and keeps the focus.
HWND search_bar();

// True from the moment that the Replace dialog opens until the search bar is closed: the panes then
// leave room for the bar.
bool search_in_progress();

// The property sheet that edits the options.
void open_settings_sheet();
