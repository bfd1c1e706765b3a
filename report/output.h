// The output stream: report text on its way to the console pane or to a file.
//
// There is one stream. It opens by itself at the first character and closes when the report ends or
// is cancelled. Every character passes the escape rules: outside quotes a backslash makes the next
// character literal, except that n becomes a line feed; quotes switch that off and are themselves
// written.
#pragma once

#include "core/block_arena.h"
#include "core/errors.h"

constexpr uint32_t k_output_name_max = 256;  // characters of the file's path, suffix included

// Brings the stream's idle state in line with the options; after New and Open.
void output_reset();

// Opens the stream where "odest" says; -13 when it is open, -7 when the file cannot be made.
ErrorCode output_open();

// Each returns 0 or a negative code and stops at the first failure. output_text() writes at most
// 4,095 characters of the text.
ErrorCode output_char(char c);
ErrorCode output_string(const char *s);
ErrorCode output_text(BlockHandle text);
ErrorCode output_newline();

// Lets waiting messages through. False once output has been cancelled.
bool output_pump();

// Flushes and closes; harmless when closed. A failed last write is shown and returned.
ErrorCode output_close();

// After a cancel or a failure nothing reopens the stream before this is called. Whatever writes to
// the stream calls it before the first character and after the last.
void output_clear_stop();

// Raises the abort flag: the next character ends the report.
void output_abort();
bool output_aborted();

// Writes the files to exactly this path instead of the "oname" option's name; null goes back to the
// option. The string is kept, not copied.
void output_set_path(const char *path);

// Closes the stream without writing anything more. Part of recovery.
void output_recover();
