#include "pane/lines.h"

namespace {

uint32_t *start_at(Lines *lines, uint32_t line) {
    return reinterpret_cast<uint32_t *>(gap_item(&lines->starts, line));
}

// Makes the starts up to a line plain numbers, and only those.
void move_step(Lines *lines, uint32_t line) {
    for (uint32_t i = lines->step_line + 1; i <= line; ++i) {
        *start_at(lines, i) += lines->step;
    }
    for (uint32_t i = line + 1; i <= lines->step_line; ++i) {
        *start_at(lines, i) -= lines->step;
    }
    lines->step_line = line;
}

// Behind `line`, whose start is a plain number, as the new one is.
void add_start(Lines *lines, uint32_t line, uint32_t start) {
    *reinterpret_cast<uint32_t *>(gap_open(&lines->starts, line + 1, 1)) = start;
    lines->step_line = line + 1;
}

// Takes out the lines behind `line` that begin in front of `end`. Room that was made for others
// stays.
void drop_starts(Lines *lines, uint32_t line, uint32_t end) {
    uint32_t gone = 0;
    while (line + gone + 1 < lines_count(lines) && line_start(lines, line + gone + 1) < end) {
        ++gone;
    }
    if (gone > 0) {
        gap_cut(&lines->starts, line + 1, gone);
    }
}

// The first position from `at` to `end` that stands behind a CR or an LF; `end` + 1 without one.
uint32_t behind_line_end(const Gap *text, uint32_t at, uint32_t end) {
    while (at <= end) {
        uint32_t count = end - at + 1;
        const char *bytes = gap_piece(text, at - 1, &count);
        for (uint32_t i = 0; i < count; ++i) {
            if (bytes[i] == '\n' || bytes[i] == '\r') {
                return at + i;
            }
        }
        at += count;
    }
    return at;
}

}  // namespace

bool lines_init(Lines *lines) {
    gap_init(&lines->starts, sizeof(uint32_t));
    lines->step_line = 0;
    lines->step = 0;
    if (!gap_reserve(&lines->starts, 1)) {
        return false;
    }
    *reinterpret_cast<uint32_t *>(gap_open(&lines->starts, 0, 1)) = 0;
    return true;
}

void lines_free(Lines *lines) {
    gap_free(&lines->starts);
}

uint32_t line_of(const Lines *lines, uint32_t position) {
    uint32_t low = 0;
    uint32_t high = lines_count(lines);
    while (high - low > 1) {
        const uint32_t middle = low + (high - low) / 2;
        if (line_start(lines, middle) <= position) {
            low = middle;
        } else {
            high = middle;
        }
    }
    return low;
}

bool begins_line(const Gap *text, uint32_t position) {
    const char before = *gap_item(text, position - 1);
    if (before != '\r') {
        return before == '\n';
    }
    return position == text->length || *gap_item(text, position) != '\n';
}

bool lines_reserve(Lines *lines, const char *bytes, uint32_t count) {
    uint32_t ends = 2;  // one where the bytes begin, of a CR LF that they part
    for (uint32_t i = 0; i < count; ++i) {
        ends += bytes[i] == '\r' || bytes[i] == '\n' ? 1U : 0U;
    }
    return gap_reserve(&lines->starts, ends);
}

// Whether a line begins at `position` itself may have changed as well.
void lines_inserted(Lines *lines, const Gap *text, uint32_t position, uint32_t count) {
    uint32_t line = position > 0 ? line_of(lines, position - 1) : 0;
    move_step(lines, line);
    drop_starts(lines, line, position + 1);
    lines->step += count;
    const uint32_t end = position + count;
    uint32_t at = behind_line_end(text, position > 0 ? position : 1, end);
    while (at <= end) {
        if (begins_line(text, at)) {
            add_start(lines, line++, at);
        }
        at = behind_line_end(text, at + 1, end);
    }
    gap_give_back(&lines->starts);  // room was made for CR and LF apart
}

void lines_removed(Lines *lines, const Gap *text, uint32_t position, uint32_t count) {
    const uint32_t line = position > 0 ? line_of(lines, position - 1) : 0;
    move_step(lines, line);
    drop_starts(lines, line, position + count + 1);
    lines->step -= count;
    if (position > 0 && begins_line(text, position)) {
        add_start(lines, line, position);
    }
    gap_give_back(&lines->starts);
}
