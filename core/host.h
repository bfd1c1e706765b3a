// What the engine asks of the program around it.
//
// Nothing here is a callback: the engine calls these functions, and each program that links the
// engine defines them. Quorvane.exe defines them in shell/, qvx in cli/, the engine's tests in
// tests/engine/ (a recorder). The last one is the engine's own, declared here only because a lower
// folder calls a higher one.
//
// Strings are 8-bit (UTF-8 where they leave the web), zero-terminated, and belong to the caller for
// the length of the call unless a function says otherwise. None of these functions may allocate
// from the arena except where it says so.
#pragma once

#include "core/block_arena.h"

#include <cstdint>
#include <cstdio>

// ---- Messages and questions ---------------------------------------------------------------------

constexpr const char *k_product_name = "Quorvane";

// Shows a short message on the status line, with a beep, for five seconds.
void show_status_message(const char *text);

// Sets the status line's resting text; it appears once no transient message is up.
void set_resting_status(const char *text);

// A box with one OK button.
void show_warning(const char *text, const char *caption);

// Questions; true only for OK, respectively Yes.
bool ask_ok_cancel(const char *text, const char *caption);
bool ask_yes_no(const char *text, const char *caption);

// The same with No as the answer that Enter gives.
bool ask_no_yes(const char *text, const char *caption);

// Yes, No or Cancel about unsaved changes; true only for Yes.
bool ask_save_changes(const char *text, const char *caption);

// Asks for a new cell's name and leaves it, normalised and valid, in `name` (at most
// k_cellname_max characters and a terminating zero). False when the user gave none; `name` is then
// empty.
bool ask_cellname(char *name);

// Ends the program at once with this exit status. Nothing is saved.
[[noreturn]] void end_program(int status);

// ---- The current cell's view --------------------------------------------------------------------

// With mode 1: takes the text pane's text into the current cell when the pane was modified, and
// keeps the pane's selection and first line in the cell's view state. Any other mode stores
// nothing. Allocates; may leave through the recovery point, and the pane then still holds the text.
// Returns the current cell.
CellHandle store_text_pane(int mode);

// Shows the current cell's name in the cellname box and its text in the text pane. The web changed
// flag keeps its value. A pane that was modified while it showed this very cell is stored first,
// and keeps its text when that does not fit; a pane that shows another cell is loaded anew, what it
// held being stored or lost by now. May take a block for the cell's view state, if one is free.
void refresh_current_view();

// Brings every view in line with a web that was just made or read: pane styles and zoom, cell list,
// current cell. What the pane held is dropped. May take a block, like refresh_current_view().
void refresh_views();

// The text selected in the active pane; "" when nothing is selected or it cannot be copied (the
// host has then raised the offer to save and exit). The host keeps the buffer until the next call
// or selected_text_free().
const char *selected_text();
void selected_text_free();

// ---- Start-up and caption -----------------------------------------------------------------------

// Sets up both text panes (styles and cellname list), once, at start-up.
void configure_panes();

// Hands the names of all live cells to the panes, which draw them as links.
void refresh_cellname_list();

// Shows the cell list with its tab selected.
void show_cell_list();

void set_window_title(const char *title);

// Until the pane takes the focus again.
void hide_text_caret();

// ---- The cell list ------------------------------------------------------------------------------
// One item for each live cell. The host keeps the items; the cell record keeps a token for its own
// (cell_list_item() in web/cells.h). Token 0 is no item; an unknown token selects and removes
// nothing.

using ListItem = uint32_t;

ListItem cell_list_insert_item(CellHandle cell);

// Inserts an item for every live cell, stores the tokens in the records, selects the current cell.
void cell_list_fill();

// Inserts an item for one cell, stores its token in the record and selects the current cell.
void cell_list_add(CellHandle cell);

void cell_list_select_current();
void cell_list_clear();
void cell_list_remove_item(ListItem item);

// ---- The console, and output in progress --------------------------------------------------------

void console_clear();

// Inserts `count` bytes at byte position `position` and brings the caret behind them.
void console_insert(uint32_t position, const char *bytes, uint32_t count);

// Handles the messages that are waiting, so that a cancel box stays alive while output runs. What
// it handles may raise output_abort().
void pump_messages();

// Output begins: from now on the host may show a cancel box. `blocks_window` is true for file
// output, for which the main window takes no input until output_ended().
void output_began(bool blocks_window);

// Output is over: the main window takes input again and the cancel box goes away. Harmless when
// neither is needed.
void output_ended();

// ---- Files --------------------------------------------------------------------------------------
// Paths are UTF-8 of any length: one that the system does not take is refused, never cut. The
// functions down to k_path_separator are defined in platform/, for every program; what fails leaves
// the reason in errno.

// Returns the open file, or null. Modes are those of fopen and always binary. The caller closes it.
FILE *file_open(const char *path, const char *mode);

// Replacing what is at a path in one step: between the two calls the old file stays as it is, and
// behind them the path names either the whole new file or the whole old one, even when the program
// is killed. A link stays and what it names is replaced; owner, permissions and other names stay
// too. One replacement at a time.
//
// Begins one; returns the open, empty file for the new bytes, or null when the path cannot be
// written (a file that may not be read and written, a folder). The platform closes the file.
FILE *file_replace_begin(const char *path);

// Brings the bytes to the disk and puts the new file in the place of the old one. False when that
// failed: the file at the path is the old one, except where file_kept_path() is not "".
bool file_replace_finish();

// Forgets the new bytes. Harmless when no replacement is under way.
void file_replace_abandon();

// Copies the file at a path into PATH SUFFIX, PATH SUFFIX 2 and so on, the first that is free.
bool file_keep(const char *path, const char *suffix);

// Where the last file_keep() put its copy; or, behind a file_replace_finish() that failed while it
// wrote into the old file itself, where the old bytes are kept. "" for nowhere.
const char *file_kept_path();

// Where the whole new file may stand while nothing is at `path`, because a program was killed
// between two steps of file_replace_finish(); "" on systems that need only one.
const char *file_successor(const char *path);

// Moves a file to a path that has none.
bool file_move(const char *from, const char *to);

// The character that separates folders in this platform's paths, '\\' or '/'.
extern const char k_path_separator;

// The mode in which a web is opened for reading: "r+b" where the program will write to it again,
// so that a file which could not be saved is refused at once.
const char *file_read_mode();

// File dialogs. `path` holds `size` bytes, the terminating zero included; it starts with the path
// to propose and receives the chosen one. False when the user cancels.
bool ask_open_path(char *path, uint32_t size);
bool ask_save_path(char *path, uint32_t size, const char *display_name);

// ---- Upward calls within the engine -------------------------------------------------------------

// Saves if the user agrees and ends the program; while a web file is being read or written it ends
// without saving. Returns only when a save that the user asked for did not succeed. Defined in
// file/document.cpp.
void save_and_exit();
