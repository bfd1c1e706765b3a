// A note's text as Markdown that shows it as it stands, and from which markdown_read.h makes it
// again, byte for byte.
#pragma once

#include <functional>
#include <string>
#include <string_view>

// The file that a word of a text leads to; "" for none.
using FileOfWord = std::function<std::string(std::string_view word)>;

// Words that lead to a file become links. What would be taken for markup is escaped, a line that is
// followed by another one ends with a hard break, blanks that begin a line and a CR alone become
// references. Line ends are LF, and the last line has one; an empty text stays empty.
std::string markdown_of(std::string_view text, const FileOfWord &file_of_word);
