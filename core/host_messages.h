// What the engine asks of the program around it, one of three: messages, questions, and what goes
// on while output runs.
//
// Nothing here is a callback: the engine calls these functions, and each program that links the
// engine defines them.
//
// Strings are 8-bit (UTF-8 where they leave the web), zero-terminated, and belong to the caller for
// the length of the call unless a function says otherwise.
// None of these functions may allocate from the arena except where it says so.
#pragma once

#include <cstdint>

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

// File dialogs. `path` holds `size` bytes, the terminating zero included; it starts with the path
// to propose and receives the chosen one. False when the user cancels.
bool ask_open_path(char *path, uint32_t size);
bool ask_save_path(char *path, uint32_t size, const char *display_name);

// ---- Output in progress -------------------------------------------------------------------------

// Handles the messages that are waiting, so that a cancel box stays alive while output runs. What
// it handles may raise output_abort().
void pump_messages();

// Output begins: from now on the host may show a cancel box. `blocks_window` is true for file
// output, for which the main window takes no input until output_ended().
void output_began(bool blocks_window);

// Output is over: the main window takes input again and the cancel box goes away. Harmless when
// neither is needed.
void output_ended();

// ---- Upward calls within the engine -------------------------------------------------------------

// Saves if the user agrees and ends the program; while a web file is being read or written it ends
// without saving. Returns only when a save that the user asked for did not succeed. Defined in
// file/document.cpp.
void save_and_exit();
