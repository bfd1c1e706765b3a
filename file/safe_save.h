// Saving over a file so that at every moment one whole version of it exists.
//
// What stands at the path becomes PATH~ before the path is emptied, and PATH~ goes away only when
// the new file is complete. PATH~ is never replaced by a file that is itself cut short, that is,
// one that does not end in "</eof>". Where no copy can be made, saving goes on without.
#pragma once

#include <cstdio>

// Sets aside what is there and opens the path, empty, for writing. Null when it cannot be opened;
// the file is then as it was. End with safe_save_close().
FILE *safe_save_open(const char *path);

// Closes the file; `code` is how writing went. Returns the code, or -4 (shown) when closing failed.
// After 0 the copy is removed, unless `keep_copy`.
int safe_save_close(FILE *file, int code, bool keep_copy);

// After a save that failed: brings the former file back to its path, or removes the path if there
// was none.
void safe_save_undo();

// True when there is a file at the path and it ends in "</eof>".
bool web_file_is_whole(const char *path);

// PATH~, in one static buffer that the next call overwrites.
const char *copy_path_of(const char *path);

// True when the file at the path is missing or cut short while its copy is whole.
bool copy_is_better(const char *path);
