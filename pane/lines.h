// Where the lines of a text begin. A line ends behind CR LF, CR or LF; the last one ends with the
// text and has no line end, so that there is always at least one.
//
// A change of the text shifts every start behind it. The shift is kept as one number, `step`, that
// holds for all lines behind `step_line`; typing in one place adds to it and walks no lines.
#pragma once

#include "pane/gap.h"

struct Lines {
    Gap starts;  // uint32_t; that of the first line is 0
    uint32_t step_line;
    uint32_t step;  // wraps round, so that it can stand for less
};

// False without memory.
bool lines_init(Lines *lines);
void lines_free(Lines *lines);

inline uint32_t lines_count(const Lines *lines) {
    return lines->starts.length;
}

// Where a line begins; the length of the text is the caller's to know for a line too many.
inline uint32_t line_start(const Lines *lines, uint32_t line) {
    const uint32_t start = *reinterpret_cast<const uint32_t *>(gap_item(&lines->starts, line));
    return line > lines->step_line ? start + lines->step : start;
}

// The line that holds a position: the last that begins at it or before.
uint32_t line_of(const Lines *lines, uint32_t position);

// `count` bytes have come in at a position / are gone from it. The text holds the change already.
// Room for the lines that some bytes may bring must have been made with lines_reserve().
bool lines_reserve(Lines *lines, const char *bytes, uint32_t count);
void lines_inserted(Lines *lines, const Gap *text, uint32_t position, uint32_t count);
void lines_removed(Lines *lines, const Gap *text, uint32_t position, uint32_t count);

// Whether a line begins at a position that is not 0.
bool begins_line(const Gap *text, uint32_t position);
