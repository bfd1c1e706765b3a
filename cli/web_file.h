// Webs from and to the files that the command line names; "-" is standard input or output.
//
// Both functions say what went wrong and return an exit status.
#pragma once

bool is_standard_stream(const char *name);

// True when there is something of that name, be it a file or not.
bool file_exists(const char *name);

// Replaces the web by what the file holds, with the trail empty and the home cell current. Done
// means that the file was opened; web_read_failed() and web_read_was_whole() say how much of it was
// read.
int web_load(const char *name);

// Writes the web. A file that was there before stays beside the new one, as PATH~, until the new
// one is complete, and is put back when it cannot be completed. A file that was not there is
// removed again.
int web_save(const char *name);
