// What the commands tell the host of qvx (core/host_messages.h, core/host_view.h) before they call
// the engine.
#pragma once

#include <cstdint>
#include <string>

// The file that messages name from now on; "" for none. The string is kept, not copied.
void host_name_file(const char *name);

// Prints "qvx: FILE: MESSAGE" on standard error.
void host_message(const char *text);

// The same for what a file function that has just failed leads to, with the system's reason behind
// it: "qvx: FILE: MESSAGE: REASON".
void host_file_message(const char *text);

// While held, the engine's messages are not printed but kept, the last of them with its reason.
// Both are "" when there was none since holding began, and stand until it begins anew.
void host_hold_messages(bool hold);
void host_print_held();
const char *host_held_message();
const char *host_held_reason();

// What the engine finds selected in the active pane; the string is kept, not copied.
void host_select(const char *text);

// Line ends of the console (Newline of web/options.h); 0 leaves the bytes alone.
void host_console_newline(uint8_t mode);

// From now on the console's bytes are added to the string; null: they go to standard output.
void host_keep_console(std::string *into);

// Writes bytes to standard output.
void host_print(const char *bytes, uint32_t count);

// Writes out what standard output holds back. False after saying so when any of it was lost.
bool host_finish_output();
