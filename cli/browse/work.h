// The web that the user works on, and the file that it comes from and goes to.
#pragma once

#include "cli/command_line.h"

#include <string>

// Reads the web; the exit status. Another program may change the file meanwhile.
int work_open(const CommandLine &line);

const std::string &work_file();

// False, after saying why, for a web of which only a part could be read.
bool work_may_change();

// Saves, and says how that went.
bool work_save();

// Puts the changes that no file has into a new file beside the web's own, or where there is room.
// The web's own file stays as the user left it. False after saying that there is none.
bool work_keep_unsaved();

// Says where they are, if they were put anywhere.
void work_name_kept();

// Tells the user of such a file of an earlier run.
void work_tell_kept();
