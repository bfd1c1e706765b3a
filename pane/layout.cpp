#include "pane/layout.h"

#include "pane/characters.h"
#include "pane/notify.h"
#include "pane/styles.h"

namespace {

constexpr int k_blank_border = 1;      // at the left of the text and at the right
constexpr uint32_t k_room_least = 20;  // a pane without a size breaks its lines as if it had
constexpr uint32_t k_endless = 0x7FFFFFFF;
constexpr uint32_t k_long_line = 1024;  // bytes

uint32_t room(const Pane *pane) {
    if (!pane->layout.wrap) {
        return k_endless;
    }
    const int wide = pane->view.width - layout_text_left(pane) - k_blank_border;
    return wide > static_cast<int>(k_room_least) ? static_cast<uint32_t>(wide) : k_room_least;
}

void forget_kept(Layout *layout) {
    for (BrokenLine &kept : layout->kept) {
        kept.line = k_no_line;
    }
}

void break_line(Pane *pane, uint32_t line, BrokenLine *kept) {
    styles_prepare(&pane->look);
    wrap_line(layout_range(pane, line), pane->look.widths, room(pane), &kept->breaks);
    kept->line = line;
}

void set_height(Pane *pane, uint32_t line, uint32_t height) {
    if (visual_height(&pane->document.visual, line) != height) {
        visual_set_height(&pane->document.visual, line, height);
        InvalidateRect(pane->window, nullptr, FALSE);
    }
}

// Clean lines all; where nothing is broken, each line takes one.
void set_clean(Layout *layout) {
    layout->dirty_from = 0;
    layout->dirty_to = 0;
}

void break_changed_lines(Pane *pane) {
    Layout *layout = &pane->layout;
    for (uint32_t line = layout->dirty_from; line < layout->dirty_to; ++line) {
        set_height(pane, line, layout->wrap ? layout_breaks(pane, line)->count : 1);
    }
    set_clean(layout);
}

const Breaks *row_breaks(Pane *pane, const Row &row) {
    return layout_breaks(pane, row.line);
}

// Where a part of a line ends.
uint32_t part_end(const Breaks *breaks, uint32_t part, const LineRange &range) {
    return part + 1 < breaks->count ? breaks->parts[part + 1].at : range.end;
}

}  // namespace

void layout_init(Layout *layout) {
    forget_kept(layout);
}

void layout_free(Layout *layout) {
    for (BrokenLine &kept : layout->kept) {
        breaks_free(&kept.breaks);
    }
}

void layout_set_wrap(Pane *pane, bool wrap) {
    if (pane->layout.wrap != wrap) {
        pane->layout.wrap = wrap;
        pane->view.x_offset = 0;
        layout_all_changed(pane);
    }
}

void layout_lines_changed(Pane *pane, uint32_t from, uint32_t to) {
    Layout *layout = &pane->layout;
    forget_kept(layout);
    if (layout->dirty_from >= layout->dirty_to) {
        layout->dirty_from = from;
        layout->dirty_to = to;
    }
    layout->dirty_from = from < layout->dirty_from ? from : layout->dirty_from;
    layout->dirty_to = to > layout->dirty_to ? to : layout->dirty_to;
}

void layout_all_changed(Pane *pane) {
    layout_lines_changed(pane, 0, lines_count(&pane->document.lines));
    InvalidateRect(pane->window, nullptr, FALSE);
}

void layout_follow(Pane *pane, const Change &change) {
    Layout *layout = &pane->layout;
    const uint32_t added = static_cast<uint32_t>(change.lines_added);
    const uint32_t first = change.line;
    const uint32_t last = first + (change.lines_added > 0 ? added : 0);
    if (layout->dirty_from < layout->dirty_to && layout->dirty_to > first) {
        layout->dirty_to =
            static_cast<int32_t>(layout->dirty_to + added) > static_cast<int32_t>(first)
                ? layout->dirty_to + added
                : first + 1;
        layout->dirty_from = first < layout->dirty_from ? first : layout->dirty_from;
    }
    layout_lines_changed(pane, first, last + 1);
}

void layout_prepare(Pane *pane) {
    Layout *layout = &pane->layout;
    styles_prepare(&pane->look);
    if (layout->dirty_from >= layout->dirty_to) {
        return;
    }
    VisualLines *visual = &pane->document.visual;
    const uint32_t top_line = visual_find(visual, pane->view.top);
    const uint32_t part = pane->view.top - visual_top(visual, top_line);
    break_changed_lines(pane);
    const uint32_t parts = visual_height(visual, top_line);
    pane->view.top = visual_top(visual, top_line) + (part < parts ? part : parts - 1);
    layout_note_top(pane);
}

void layout_prepare_styled(Pane *pane, uint32_t end) {
    need_styles(pane, end);
    layout_prepare(pane);
}

void layout_note_top(Pane *pane) {
    const uint32_t line = visual_find(&pane->document.visual, pane->view.top);
    pane->view.top_start = document_line_start(&pane->document, line);
}

uint32_t layout_line_count(Pane *pane) {
    layout_prepare(pane);
    return pane->document.visual.total;
}

const Breaks *layout_breaks(Pane *pane, uint32_t line) {
    BrokenLine *kept = pane->layout.kept;
    for (uint32_t i = 0; i < 2; ++i) {
        if (kept[i].line == line) {
            return &kept[i].breaks;
        }
    }
    const LineRange range = layout_range(pane, line);
    BrokenLine *free = &kept[range.end - range.start >= k_long_line ? 1 : 0];
    break_line(pane, line, free);
    return &free->breaks;
}

LineRange layout_range(const Pane *pane, uint32_t line) {
    const Document *document = &pane->document;
    return {&document->text, &document->styles, document_line_start(document, line),
            document_line_end(document, line)};
}

int layout_text_left(const Pane *pane) {
    int left = k_blank_border;
    for (const int margin : pane->view.margins) {
        left += margin;
    }
    return left;
}

uint32_t layout_row_of(Pane *pane, uint32_t position) {
    layout_prepare(pane);
    const uint32_t line = line_of(&pane->document.lines, position);
    return visual_top(&pane->document.visual, line) + part_of(layout_breaks(pane, line), position);
}

int layout_x_of(Pane *pane, uint32_t position) {
    layout_prepare(pane);
    const uint32_t line = line_of(&pane->document.lines, position);
    const Breaks *breaks = layout_breaks(pane, line);
    const Break part = breaks->parts[part_of(breaks, position)];
    const uint32_t x = x_of(layout_range(pane, line), pane->look.widths, part, position) - part.x;
    return static_cast<int>(x) + layout_text_left(pane) - pane->view.x_offset;
}

Row layout_row(Pane *pane, uint32_t row) {
    layout_prepare(pane);
    VisualLines *visual = &pane->document.visual;
    const uint32_t line = visual_find(visual, row);
    const uint32_t parts = visual_height(visual, line);
    const uint32_t part = row - visual_top(visual, line);
    return {line, part < parts ? part : parts - 1};
}

uint32_t layout_row_end(Pane *pane, uint32_t row) {
    const Row place = layout_row(pane, row);
    const Breaks *breaks = row_breaks(pane, place);
    return place.part + 1 < breaks->count ? breaks->parts[place.part + 1].at
                                          : document_line_start(&pane->document, place.line + 1);
}

uint32_t layout_position_in_row(Pane *pane, uint32_t row, int x, Near which) {
    const Row place = layout_row(pane, row);
    const Breaks *breaks = row_breaks(pane, place);
    const LineRange range = layout_range(pane, place.line);
    const Break part = breaks->parts[place.part];
    const uint32_t end = part_end(breaks, place.part, range);
    const int wanted = x - layout_text_left(pane) + pane->view.x_offset + static_cast<int>(part.x);
    uint32_t at = part.at;
    int from = static_cast<int>(part.x);
    while (at < end) {
        uint32_t next = at;
        const int to = static_cast<int>(
            step_width(range, pane->look.widths, &next, static_cast<uint32_t>(from)));
        if (2 * wanted < (which == Near::edge ? from + to : 2 * to)) {
            break;
        }
        at = next;
        from = to;
    }
    return at;
}

uint32_t layout_position_at(Pane *pane, POINT at, Near which) {
    layout_prepare(pane);
    const int height = pane->look.line_height;
    const int rows = at.y >= 0 ? static_cast<int>(at.y) / height
                               : -((height - 1 - static_cast<int>(at.y)) / height);
    const int above = static_cast<int>(pane->view.top) + rows;
    const int row = above > 0 ? above : 0;
    if (row >= static_cast<int>(layout_line_count(pane))) {
        return pane_length(pane);
    }
    return layout_position_in_row(pane, static_cast<uint32_t>(row), static_cast<int>(at.x), which);
}

uint32_t layout_line_at(Pane *pane, POINT at) {
    const uint32_t row = pane->view.top + static_cast<uint32_t>(at.y / pane->look.line_height);
    return row < layout_line_count(pane) ? layout_row(pane, row).line
                                         : lines_count(&pane->document.lines);
}

bool layout_hits_character(Pane *pane, POINT at) {
    const uint32_t row = pane->view.top + static_cast<uint32_t>(at.y) /
                                              static_cast<uint32_t>(pane->look.line_height);
    if (at.y < 0 || at.y >= pane->view.height || at.x < layout_text_left(pane) ||
        row >= layout_line_count(pane)) {
        return false;
    }
    const Row place = layout_row(pane, row);
    const uint32_t end =
        part_end(row_breaks(pane, place), place.part, layout_range(pane, place.line));
    return layout_position_in_row(pane, row, static_cast<int>(at.x), Near::character) < end;
}
