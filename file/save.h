// A web file on its way to and from the disk: saved in one step, and recognised when another
// program has written it since.
#pragma once

#include <cstdint>
#include <cstdio>

// What tells the bytes of one version of a file from those of another.
struct Fingerprint {
    bool known;  // false: of no file, which no version is told from
    uint32_t length;
    uint32_t checksum;
};

// Opens a web file for reading. Where a save was cut off between its last two steps it is brought
// to its end first. Null when there is no file to open; errno says why.
FILE *open_web_file(const char *path, const char *mode);

// The same for a save: what the next one would sweep away is moved to the path that it belongs to,
// when nothing is there. `stuck` when that cannot be done.
enum class CutOffSave : uint8_t { none, finished, stuck };
CutOffSave finish_cut_off(const char *path);

// The same for every file that the file dialogs would show.
void finish_all_cut_off();

// Of an open file, which then is at its start. Unknown for what cannot be read twice.
Fingerprint fingerprint_of(FILE *file);

// True when the file at the path is the version of this fingerprint.
bool web_file_is(const char *path, const Fingerprint &version);

// True when the file at the path is another version than the one of this fingerprint. A file that
// is not there, or cannot be read, is none.
bool web_file_changed(const char *path, const Fingerprint &last);

// Writes the web to the path in one step. With `keep_old` what is there now is kept beside it as
// PATH.bad, for good, when all of the web has been written; it is cleared then. Returns 0 and the
// new fingerprint; -3 when the path cannot be written, or the old bytes cannot be kept; -4 when
// writing failed. Failures have been shown, and the file is then the old one, or what a failed save
// in place made of it, with the old bytes kept beside it. Leaves through the recovery point when a
// value that has no text yet finds no block.
int save_web_file(const char *path, bool *keep_old, Fingerprint *written);

// Gives up a save that was left by a jump. Part of recovery.
void save_web_file_recover();
