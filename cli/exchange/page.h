// A web as one page of HTML that needs nothing else: no other file, no network, and no script to be
// read.
#pragma once

#include "cli/note.h"

#include <string>
#include <string_view>

// The page, in UTF-8. Every note is an article with its links and, below it, the notes that link to
// it; `title` is the web's. Bytes that are no UTF-8 become U+FFFD, control characters the pictures
// of them.
std::string page_of(const Notes &notes, std::string_view title);

// What an address names a note by behind its '#': the folded name in small letters, and what is
// neither letter, digit nor blank as '~' and two digits. Equal for equal names only, so that it
// stays good when the web grows.
std::string page_id(std::string_view name);
