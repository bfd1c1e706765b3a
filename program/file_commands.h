// The commands of the File menu. Each stores the text pane first, does what file/document.h says,
// shows the current cell again afterwards, and leaves a web that counts as unchanged whatever
// happened, except
// where the pane's text did not fit into the web that was saved. They return what the document's
// operation returned; while output is under way they are refused with -13.
#pragma once

int doc_command_new();
int doc_command_open();
int doc_command_save();
int doc_command_save_as();

// doc_command_open() with the path given.
int doc_command_open_path(const char *path);
