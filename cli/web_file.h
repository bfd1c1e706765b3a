// Webs from and to the files that the command line names; "-" is standard input or output.
// What returns an int is an exit status, and says itself what went wrong.
#pragma once

bool is_standard_stream(const char *name);

// True when both paths lead to one file that exists, however they are spelled. The first may be "-"
// for what standard input comes from, where the system tells.
bool same_file(const char *first, const char *second);

// Keeps other runs of qvx from changing the file until this one ends; called before a web is read
// that will be written again. Waits up to ten seconds for another run. A standard stream needs no
// lock; a file that is not there needs none, or, with `must_exist`, cannot be opened.
int web_lock(const char *name, bool must_exist);

// The same for a file that does not exist yet: makes it, empty. Refused when anything is there.
int web_claim(const char *name);

// True when the path has a file, or one that a save was cut off from putting there; never for a
// standard stream.
bool web_is_there(const char *name);

// Removes the empty file of a web_claim() whose web was not saved.
void web_give_up(const char *name);

// Replaces the web by what the file holds, with the trail empty and the home cell current. Done
// means that the file was opened; web_read_failed() and web_read_was_whole() say how much of it was
// read.
int web_load(const char *name);

// The same for a web that stays open for long and may be saved with web_save_unlocked(): nobody is
// kept from changing its file meanwhile.
int web_load_unlocked(const char *name);

// Writes the web, replacing the file in one step. A file that was read from the same path, but not
// whole, is kept beside it. When another program has changed the file since it was read, nothing is
// written.
int web_save(const char *name);

// The same for a web that was loaded without a lock, which is held only as long as this takes.
int web_save_unlocked(const char *name);
