// The commands of the File menu. Each stores the text pane first, does what file/document.h says,
// shows the current cell again, and leaves a web that counts as unchanged even where it failed.
// Two things are otherwise: a user who keeps another program's file (k_left_alone) keeps the
// changes too, and where the pane's text does not fit, a save leaves it in the pane, which is not
// shown anew, and the web counts as changed. They return what the document's operation returned;
// while output is under way they are refused with k_output_in_use.
#pragma once

int doc_command_new();
int doc_command_open();
int doc_command_save();
int doc_command_save_as();

// doc_command_open() with the path given.
int doc_command_open_path(const char *path);
