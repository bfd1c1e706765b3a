// What the engine asks of the program around it, three of three: files, and which of them.
//
//   by path        every program: platform/replace.cpp (file_replace_..., file_keep,
//                  file_kept_path) and platform/posix/system.cpp, platform/windows/system.cpp or
//                  platform/handheld/system.cpp, the latter two with platform/windows/common.cpp
//   which file     Quorvane.exe: shell/dialogs/file_dialogs.cpp; qvx and bench/: cli/host_qvx.cpp
//                  (file_read_mode) and cli/no_view.cpp; engine tests: tests/engine/recorder.cpp
//
// Paths are UTF-8 and zero-terminated. Those to files are of any length: one that the system does
// not take is refused, never cut; what fails leaves the reason in errno. None of these functions
// allocates from the arena for itself, but a dialog handles messages like a question
// (core/host_messages.h).
#pragma once

#include <cstdint>
#include <cstdio>

// ---- Files by path ------------------------------------------------------------------------------

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

// Where the new file stands, which may not be whole, while nothing is at `path` because a program
// was killed between two steps of file_replace_finish(). "" when something is there, when there is
// no such file, and on systems that need only one step. What cannot be looked at counts as one.
const char *file_successor(const char *path);

// The same for the old file, as it was.
const char *file_predecessor(const char *path);

// Calls `found` with the path of each file that may have one of these and is not there itself, in
// the folders that the file dialogs show; on systems with a predecessor only.
void file_each_cut_off(void (*found)(const char *path));

// Moves a file to a path that has none.
bool file_move(const char *from, const char *to);

// The character that separates folders in this platform's paths, '\\' or '/'.
extern const char k_path_separator;

// ---- Which file ---------------------------------------------------------------------------------

// Dialogs. `path` holds `size` bytes, the terminating zero included; it starts with the path to
// propose and receives the chosen one. False when the user cancelled, or chose a path that is too
// long, of which he has been told; `path` is then of no use.
bool ask_open_path(char *path, uint32_t size);
bool ask_save_path(char *path, uint32_t size, const char *display_name);

// The mode in which a web is opened for reading: "r+b" where the program will write to it again,
// so that a file which could not be saved is refused at once.
const char *file_read_mode();
