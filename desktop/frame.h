// What a desktop's window has and a handheld's screen does not.
//
// The main window asks for nothing of this: SHCreateMenuBar adopts it. The window then has a title,
// a sizing border and buttons, and
// - its first client area, the menu bar included, is 360 x 560, or what the environment variable
//   QUORVANE_SCREEN says (WIDTHxHEIGHT in pixels). On the handheld's 240 x 320 screen the title bar
//   takes 26 pixels more;
// - sizes that the program itself asks for while the window is created are not followed;
// - WM_SIZE does not reach the program while the window is minimised;
// - the close button sends the quit command, and so does the end of the session;
//   WM_CLOSE is left to the program;
// - after a dialog the current directory is what it was at the start (file dialogs: pass
//   OFN_NOCHANGEDIR too, because the program may read a file before the window is enabled again);
// - a web file that is dropped on the window or on one of its panes is opened.
#pragma once

// Called by the message loop when the queue is empty: gives the processor away until a message
// arrives, at most 15 ms. The handheld's build has its own (handheld/idle.cpp).
void desktop_idle();

// Defined by the program: opens the web file `path`, which is absolute and as long as it likes, as
// if the user had chosen it in File Open. Called from the message loop, never within another
// handler, and only while the window takes input.
void open_dropped_file(const wchar_t *path);
