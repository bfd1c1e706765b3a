// The files that hold a web's notes, one each.
#pragma once

#include "cli/note.h"

#include <string>
#include <vector>

// For each note the name of its file, without folder and without ".md": the note's own, as far as
// every system takes it. Letters, digits, blanks and '_' stay, and letters of other scripts that no
// system takes for two or for one another; anything else becomes '_'. No two are equal on a system
// that does not tell capitals from small letters, none leads out of the folder, none is a device's.
std::vector<std::string> file_stems(const Notes &notes);

// True when a note that is read from such a file gets its name from that alone.
bool stem_is_name(const std::string &stem, const std::string &name);

// The stem as a system sees it that does not tell capitals from small letters.
std::string caseless_stem(const std::string &stem);
