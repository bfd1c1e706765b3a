// Web files dropped on the main window or on one of its panes.
//
// Whichever window takes the drop, the main window opens the file, and only once it handles the
// message that is posted to it here: opening may ask the user something, and the program that the
// file comes from must not wait for the answer. While the main window takes no input nothing is
// taken.
#pragma once

#include <windows.h>

#include <shellapi.h>

// Posted to the main window: drop_open() is due.
constexpr UINT k_message_open_dropped = WM_APP + 1;

// The main window, which takes drops from now on, until it is about to go.
void drop_start(HWND main_window);
void drop_stop();

// The main window is gone, and its children with it.
void drop_end();

// Makes another of its windows take dropped web files. Whatever else is dropped goes to the drop
// target that the window had before, if any (a Scintilla pane takes text).
void drop_register(HWND window);

// For WM_DROPFILES.
void drop_files_arrived(HDROP files);

// Has the program open the file that was dropped last (open_dropped_file() of desktop/frame.h).
void drop_open();
