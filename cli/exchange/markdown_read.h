// The text of a Markdown file as a note's: links become the words that name cells, escapes and
// references what they stand for. All other markup stays as it is, and code
// between backticks and between fences altogether; a line that is code for its indent alone is read
// like any other.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

// The name of the cell that a link leads to, none where it leads elsewhere. A target is a path from
// the file's folder, `wiki` what stands between double brackets.
using CellOfTarget = std::function<std::optional<std::string>(std::string_view target, bool wiki)>;

// The text, with CR LF; the last line end of the file goes.
std::string text_of_markdown(std::string_view markdown, const CellOfTarget &cell_of_target);
