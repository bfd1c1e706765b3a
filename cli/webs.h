// Webs loaded as notes, and notes brought back into a web: what most commands stand on. What
// returns an int is an exit status (cli/exit_status.h), and has said on standard error what went
// wrong.
#pragma once

#include "cli/command_line.h"
#include "cli/differences.h"
#include "cli/note.h"

#include <functional>

// Loads a web that is only looked at: what of it can be read is good enough, unless reading failed.
int load_to_read(const std::string &name);

// Loads a web (`line.file`) that is going to be written to `target`, which nobody else changes
// until this program ends. Refused when it cannot be read whole, unless --force is given.
int load_to_write(const CommandLine &line, const std::string &target);

// Loads a web as changing it or making another one of it asks for: refused when it cannot be read
// whole, unless forced.
int load_whole(const std::string &name, bool force);

// Runs a command that only reads on each of `line.files`. The worst of what happened is the status:
// a body's k_exit_done beats its k_exit_refused (found in one, not in another), anything else beats
// both.
using ReadingBody = std::function<int(const std::string &file, const Notes &notes)>;
int read_webs(const CommandLine &line, const ReadingBody &body);

// The same for a command that takes one web, `line.file`.
int read_web(const CommandLine &line, const ReadingBody &body);

// Runs a command that changes the web `line.file`: all of what the body does to the notes and to
// the saved options, or, when it returns anything but k_exit_done, nothing. A web that is as before
// is not written, except to standard output. With --dry-run the differences are printed, unless the
// command has another way to show them, and nothing is written.
using ChangingBody = std::function<int(Notes *notes)>;
using ShowingBody = std::function<void(const Notes &before, const Notes &after)>;
int change_web(const CommandLine &line, const ChangingBody &body,
               const ShowingBody &show = print_differences);

// Makes the web at hand hold these notes, whose line ends become CR LF; its options stay. Home must
// be among them. k_exit_memory when they do not fit, or could not be read again.
int take_notes(Notes notes);

// Says on standard error "qvx: FILE: CELL: MESSAGE"; returns k_exit_refused.
int refuse_cell(const std::string &cell, const char *message);

// "no such cell", for a name that find_note() does not find.
int no_such_cell(const std::string &cell);
