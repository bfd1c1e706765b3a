// The document: which file the web belongs to, and New, Open, Save and Save As.
//
// Operations return 0 when done, 1 when the user cancelled a file dialog, 2 when another program
// has changed the file and the user would not save over it, or a negative ErrorCode that has been
// shown. After 2 nothing has happened and the web still counts as changed.
#pragma once

#include <cstdint>

// Bytes of a path: 256 UTF-16 units, as the system has them, in UTF-8.
constexpr uint32_t k_path_max = 3 * 256;

// Opens the file named on the command line (quotes are dropped), or makes a new web.
void doc_start(const char *command_line);

int doc_new();

// An empty path asks the user.
int doc_open(const char *path);
int doc_save();
int doc_save_as();

// Saves when there are unsaved changes and the user says Yes; 0 otherwise.
int doc_save_if_changed();

// True only for Yes.
bool doc_confirm_save();

void doc_set_paths(const char *path);

// The file's name without folders and suffix, in one static buffer.
const char *doc_display_name(const char *path);

// Sets the caption: the product name and the first 10 characters of the display name.
void doc_set_title(const char *display_name);

// The paths in force; "" when there is none.
const char *doc_current_path();
const char *doc_save_path();
const char *doc_current_display_name();

// Stores the pane, or says "OUT OF MEMORY" when its text does not fit. False in that case; the pane
// still holds the text. The web changed flag keeps its value.
bool try_store_current_text();

// Lets go of the web file. Part of recovery.
void document_recover();
