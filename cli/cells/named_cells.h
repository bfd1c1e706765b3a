// Cells by the names that the command line gives.
#pragma once

#include "cli/note.h"

// The cell of that name; null after saying that there is none.
const Note *named_note(const Notes &notes, const std::string &name);

// The same for a cell that a command changes, and makes when there is none; null after saying that
// the name cannot be one.
Note *note_to_write(Notes *notes, const std::string &name);
