// What the engine asks of the program around it, one of three: messages, questions, and what goes
// on while output runs. Each program defines these functions and the linker joins them:
//
//   Quorvane.exe   shell/status_line.cpp, shell/output_host.cpp, shell/main.cpp (end_program,
//                  check_failed), shell/dialogs/message_boxes.cpp, shell/dialogs/cellname.cpp
//   qvx, bench/    cli/host_qvx.cpp; what neither a console nor a file can answer: cli/no_view.cpp
//   engine tests   tests/engine/recorder.cpp
//   shell tests    as Quorvane.exe, but for tests/shell/shell_test.cpp (end_program, check_failed)
//
// Strings are 8-bit (UTF-8 where they leave the web), zero-terminated, and belong to the caller for
// the length of the call unless a function says otherwise.
//
// None of these functions allocates from the arena for itself, but a window handles messages while
// a box is up: commands that were posted before run then, each under a recovery point of its own,
// and the web may be another one when the answer comes.
#pragma once

#include <cstdint>

// ---- Messages -----------------------------------------------------------------------------------

constexpr const char *k_product_name = "Quorvane";

// Shows a short message (of 127 bytes; a longer one is cut where there is no more room) instead of
// the resting text; in a window with a beep and for five seconds. The string stays valid for good:
// it is a literal or a message of core/errors.h. With one of those about a file errno still holds
// the reason, which a console tells too.
void show_status_message(const char *text);

// Sets the status line's resting text, cut like a message; it appears once no message is up.
void set_resting_status(const char *text);

// A box with one OK button.
void show_warning(const char *text, const char *caption);

// ---- Questions ----------------------------------------------------------------------------------
// A program without a user answers No, and must not come to ask_cellname().

// True only for OK, respectively Yes.
bool ask_ok_cancel(const char *text, const char *caption);
bool ask_yes_no(const char *text, const char *caption);

// The same with No as the answer that Enter gives.
bool ask_no_yes(const char *text, const char *caption);

// Yes, No or Cancel about unsaved changes; true only for Yes.
bool ask_save_changes(const char *text, const char *caption);

// Asks for a new cell's name and leaves it, normalised and valid, in `name` (at most
// k_cellname_max characters and a terminating zero). False when the user gave none, or one that is
// no cellname, of which he has been told; `name` is then empty.
bool ask_cellname(char *name);

// ---- Output in progress -------------------------------------------------------------------------
// core/busy.h is set from output_began() to output_ended(), so that a command which comes in
// between is refused when it would change the web.

// Handles the messages that are waiting, so that a cancel box stays alive while output runs. What
// it handles may raise output_abort() (report/output.h).
void pump_messages();

// Output begins: from now on the host may show a cancel box. `blocks_window` is true for file
// output, for which the main window takes no input until output_ended().
void output_began(bool blocks_window);

// Output is over: all of it is on the screen, the main window takes input again, the cancel box
// goes away, and a quit that had to wait is asked for again. Harmless when none of that is needed.
void output_ended();

// ---- The end ------------------------------------------------------------------------------------

// Ends the program at once with this exit status, or for a negative one (an ErrorCode) with one
// that says so. Nothing is saved.
[[noreturn]] void end_program(int status);

// Says where the program's own code went wrong (core/check.h), as "FILE:LINE: CONDITION", and ends
// the program at once, without saving: what is in memory cannot be trusted.
[[noreturn]] void check_failed(const char *what);

// Not the host's: what the arena's offer to save and exit, and a window's quit, lead to. Saves if
// the user agrees and ends the program; while a web file is being read or written it ends without
// saving. Returns only when a save that the user asked for did not succeed. Allocates under a
// recovery point of its own. Defined in file/document.cpp.
void save_and_exit();
