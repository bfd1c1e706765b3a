// The modal dialogs that commands open. Those that the engine asks for are defined in this room
// too: boxes and a new cell's name (core/host_messages.h), and files (core/host_files.h).
#pragma once

void open_about_box();

// True when the user closed it with OK: the zoom option then has the factor chosen.
bool open_zoom_dialog();

// Asks what to search for and opens the search bar. Does nothing while either is open.
void open_replace_dialog();
