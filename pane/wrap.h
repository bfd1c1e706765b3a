// Where a line of the text is broken so that it fits into a width. All widths are pixels.
//
// A line is broken behind blanks and where the style changes; a piece that is wider than the room
// has no such place, and is broken where the room ends. Tabs stop at the same places as if the line
// was not broken.
#pragma once

#include "pane/gap.h"

constexpr uint32_t k_measured_styles = 8;

// How wide characters are. Bytes stand for themselves in `ascii`; anything else is asked for.
struct Widths {
    const uint16_t *ascii[k_measured_styles];
    uint32_t (*other)(void *owner, uint32_t style, uint32_t code);
    void *owner;
    uint32_t tab;  // from one stop to the next
};

struct Break {
    uint32_t at;  // the first character of a part of the line
    uint32_t x;   // how far it stands from the beginning of the line
};

// The parts of one line; its memory grows as need be.
struct Breaks {
    Break *parts;
    uint32_t count;
    uint32_t size;
};

struct LineRange {
    const Gap *text;
    const Gap *styles;
    uint32_t start;
    uint32_t end;  // without its line end
};

void breaks_free(Breaks *breaks);

// Breaks a line. Without memory for all its parts the last one takes the rest; so it does in a line
// of more than k_height_max parts.
void wrap_line(const LineRange &line, const Widths &widths, uint32_t room, Breaks *breaks);

// The part that a position stands in; one where the line is broken is in the part behind it.
uint32_t part_of(const Breaks *breaks, uint32_t position);

// How far a position stands from the beginning of its line, measured from where a part begins.
uint32_t x_of(const LineRange &line, const Widths &widths, Break from, uint32_t position);

// The next character: moves `*at` behind it and returns how far it ends from the line's beginning.
uint32_t step_width(const LineRange &line, const Widths &widths, uint32_t *at, uint32_t x);
