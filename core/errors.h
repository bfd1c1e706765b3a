// The program's error codes and their messages. Operations that can fail return 0 or one of these;
// whoever detects a failure shows it once, and callers hand the code on unchanged.
#pragma once

using ErrorCode = int;

constexpr ErrorCode k_out_of_memory = -1;
constexpr ErrorCode k_cannot_open_web = -3;
constexpr ErrorCode k_cannot_write_web = -4;
constexpr ErrorCode k_cannot_read_web = -5;
constexpr ErrorCode k_cannot_open_output = -7;
constexpr ErrorCode k_output_in_use = -13;
constexpr ErrorCode k_aborted = -16;
constexpr ErrorCode k_internal_error = -20;
constexpr ErrorCode k_bad_cellname_in_file = -44;  // has no message of its own

// Result of a document operation whose file dialog the user cancelled.
constexpr int k_cancelled = 1;

// Result of one whose user would not save over what another program made of the file.
constexpr int k_left_alone = 2;

// The message of a code; "Unexpected Error!" for one that has none (above 0, below -20).
const char *error_message(ErrorCode code);

// Shows the message of a code on the status line, that of 0 too.
void show_error(ErrorCode code);

// Shows the message of a code other than 0 on the status line; returns the code.
ErrorCode report_error(ErrorCode code);
