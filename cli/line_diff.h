// Which lines of a text became which of another one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

using Lines = std::vector<std::string_view>;

// What stands between a text's line ends (CR LF), as pieces of it; join_lines() makes the same text
// of it again. A text that ends with a line end has an empty line behind it, an empty text has no
// line.
Lines split_lines(std::string_view text);
std::string join_lines(const Lines &lines);

// A run of lines before and the run of lines that took its place, from `..._from` to before
// `..._to`. One of the two may be empty.
struct LineChange {
    size_t before_from;
    size_t before_to;
    size_t after_from;
    size_t after_to;
};

// The changes in their order; lines that stayed part any two of them. As few lines as it takes
// where texts are much alike; where they are not, more, because the time is at most a small
// multiple of the number of lines.
std::vector<LineChange> line_changes(const Lines &before, const Lines &after);
