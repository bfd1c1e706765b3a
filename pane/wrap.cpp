#include "pane/wrap.h"

#include "pane/characters.h"
#include "pane/visual_lines.h"

#include <cstdlib>

namespace {

constexpr uint32_t k_tab_least = 2;  // a tab is no narrower

uint8_t style_at(const LineRange &line, uint32_t at) {
    const uint8_t style = static_cast<uint8_t>(*gap_item(line.styles, at));
    return style < k_measured_styles ? style : uint8_t{0};
}

bool add_break(Breaks *breaks, uint32_t at, uint32_t x) {
    if (breaks->count == breaks->size) {
        const uint32_t size = breaks->size * 2 + 8;
        void *parts = realloc(breaks->parts, size * sizeof(Break));
        if (parts == nullptr || breaks->count == k_height_max) {
            breaks->parts = parts != nullptr ? static_cast<Break *>(parts) : breaks->parts;
            return false;
        }
        breaks->parts = static_cast<Break *>(parts);
        breaks->size = size;
    }
    breaks->parts[breaks->count++] = {at, x};
    return true;
}

bool is_blank(char c) {
    return c == ' ' || c == '\t';
}

bool may_break(const LineRange &line, uint32_t at) {
    return style_at(line, at - 1) != style_at(line, at) ||
           (is_blank(*gap_item(line.text, at - 1)) && !is_blank(*gap_item(line.text, at)));
}

// Goes on over what nearly all text is: ASCII without tabs in the style of the character in front
// of `here`, as far as it ends in front of `limit`. A long text is broken by this loop; it stays a
// function, so that there are registers for all of it.
[[gnu::noinline]] Break walk_plain(const LineRange &line, const Widths &widths, uint32_t limit,
                                   Break here, Break *good) {
    uint32_t count = line.end - here.at;
    const char *styles = gap_piece(line.styles, here.at, &count);
    const char *text = gap_piece(line.text, here.at, &count);
    const char style = *gap_item(line.styles, here.at - 1);
    const uint16_t *ascii = widths.ascii[style_at(line, here.at - 1)];
    bool behind_blank = is_blank(*gap_item(line.text, here.at - 1));
    uint32_t x = here.x;
    uint32_t i = 0;
    while (i < count && styles[i] == style) {
        const uint8_t byte = static_cast<uint8_t>(text[i]);
        const uint32_t end = byte < 0x80 && byte != '\t' ? x + ascii[byte] : limit;
        if (end >= limit) {
            break;
        }
        if (behind_blank && byte != ' ') {
            *good = {here.at + i, x};
        }
        behind_blank = byte == ' ';
        x = end;
        ++i;
    }
    return {here.at + i, x};
}

}  // namespace

void breaks_free(Breaks *breaks) {
    free(breaks->parts);
    *breaks = {};
}

uint32_t step_width(const LineRange &line, const Widths &widths, uint32_t *at, uint32_t x) {
    const uint8_t byte = static_cast<uint8_t>(*gap_item(line.text, *at));
    const uint8_t style = style_at(line, *at);
    if (byte == '\t') {
        ++*at;
        return ((x + k_tab_least) / widths.tab + 1) * widths.tab;
    }
    if (byte < 0x80) {
        ++*at;
        return x + widths.ascii[style][byte];
    }
    const Character found = character_at(line.text, *at);
    *at += found.size;
    return x + widths.other(widths.owner, style, found.code);
}

void wrap_line(const LineRange &line, const Widths &widths, uint32_t room, Breaks *breaks) {
    breaks->count = 0;
    if (!add_break(breaks, line.start, 0)) {
        return;
    }
    Break part = breaks->parts[0];
    Break good = part;  // the last place in the part where the line may be broken
    Break here = part;
    while (here.at < line.end) {
        if (here.at > part.at && may_break(line, here.at)) {
            good = here;
        }
        uint32_t next = here.at;
        const uint32_t end = step_width(line, widths, &next, here.x);
        while (end - part.x >= room && here.at > part.at) {
            part = good.at > part.at ? good : here;
            if (!add_break(breaks, part.at, part.x)) {
                return;
            }
        }
        here = walk_plain(line, widths, part.x + room, {next, end}, &good);
    }
}

uint32_t part_of(const Breaks *breaks, uint32_t position) {
    uint32_t low = 0;
    uint32_t high = breaks->count;
    while (high - low > 1) {
        const uint32_t middle = low + (high - low) / 2;
        if (breaks->parts[middle].at <= position) {
            low = middle;
        } else {
            high = middle;
        }
    }
    return low;
}

uint32_t x_of(const LineRange &line, const Widths &widths, Break from, uint32_t position) {
    uint32_t x = from.x;
    for (uint32_t at = from.at; at < position && at < line.end;) {
        x = step_width(line, widths, &at, x);
    }
    return x;
}
