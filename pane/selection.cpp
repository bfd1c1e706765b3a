#include "pane/selection.h"

#include "pane/characters.h"
#include "pane/layout.h"
#include "pane/view.h"
#include "pane/words.h"

namespace {

// Only what is selected is drawn otherwise than before.
void draw_selection_anew(Pane *pane) {
    if (!selection_empty(pane)) {
        InvalidateRect(pane->window, nullptr, FALSE);
    }
}

uint32_t follow_insertion(uint32_t position, const Change &change, bool pushed) {
    const bool behind = position > change.position || (pushed && position == change.position);
    return behind ? position + change.length : position;
}

uint32_t follow_removal(uint32_t position, const Change &change) {
    if (position <= change.position) {
        return position;
    }
    return position < change.position + change.length ? change.position : position - change.length;
}

uint32_t follow(uint32_t position, const Change &change, bool pushed) {
    return (change.kind & k_change_insert) != 0 ? follow_insertion(position, change, pushed)
                                                : follow_removal(position, change);
}

bool is_blank_at(const Pane *pane, uint32_t at) {
    const char c = document_byte(&pane->document, at);
    return c == ' ' || c == '\t';
}

uint32_t position_in_row(Pane *pane, uint32_t row) {
    return layout_position_in_row(pane, row, pane->wanted_x - pane->view.x_offset, Near::edge);
}

uint32_t line_of_caret(const Pane *pane) {
    return line_of(&pane->document.lines, pane->caret);
}

}  // namespace

void select_range(Pane *pane, uint32_t anchor, uint32_t caret) {
    draw_selection_anew(pane);
    pane->anchor = anchor;
    pane->caret = caret;
    draw_selection_anew(pane);
    view_caret_moved(pane);
}

void move_caret(Pane *pane, uint32_t position, bool extend) {
    select_range(pane, extend ? pane->anchor : position, position);
    view_show_caret(pane);
}

void keep_x(Pane *pane) {
    pane->wanted_x = layout_x_of(pane, pane->caret) + pane->view.x_offset;
}

// The end of a broken line is the beginning of the next, which is a row too far.
void move_by_row(Pane *pane, bool down, bool extend) {
    const uint32_t row = layout_row_of(pane, pane->caret);
    if (down ? row + 1 >= layout_line_count(pane) : row == 0) {
        move_caret(pane, down ? pane_length(pane) : 0, extend);
        return;
    }
    const uint32_t to = down ? row + 1 : row - 1;
    uint32_t position = position_in_row(pane, to);
    while (layout_row_of(pane, position) > to) {
        position = position_before(pane_text(pane), position);
    }
    move_caret(pane, position, extend);
}

// Above the text the first line counts.
void move_by_page(Pane *pane, bool down, bool extend) {
    const int by = down ? view_page(pane) : -view_page(pane);
    const int row = static_cast<int>(layout_row_of(pane, pane->caret)) + by;
    const bool below = row >= static_cast<int>(layout_line_count(pane));
    const uint32_t position =
        below ? pane_length(pane) : position_in_row(pane, static_cast<uint32_t>(row > 0 ? row : 0));
    view_scroll_to(pane, static_cast<int>(pane->view.top) + by);
    move_caret(pane, position, extend);
}

void move_by_character(Pane *pane, bool forward, bool extend) {
    uint32_t to = forward ? position_after(pane_text(pane), pane->caret)
                          : position_before(pane_text(pane), pane->caret);
    if (!extend && !selection_empty(pane)) {
        to = forward ? selection_end(pane) : selection_start(pane);
    }
    move_caret(pane, to, extend);
    keep_x(pane);
}

void move_by_word(Pane *pane, bool forward, bool extend) {
    const Gap *text = pane_text(pane);
    move_caret(pane, forward ? next_word(text, pane->caret) : previous_word(text, pane->caret),
               extend);
    keep_x(pane);
}

void move_to_line_start(Pane *pane, bool extend) {
    const uint32_t line = line_of_caret(pane);
    const uint32_t start = document_line_start(&pane->document, line);
    uint32_t text = start;
    while (is_blank_at(pane, text)) {
        ++text;
    }
    move_caret(pane, pane->caret == text ? start : text, extend);
    keep_x(pane);
}

void move_to_line_end(Pane *pane, bool extend) {
    move_caret(pane, document_line_end(&pane->document, line_of_caret(pane)), extend);
    keep_x(pane);
}

// What comes in where the selection begins does not become part of it.
void selection_follow(Pane *pane, const Change &change) {
    const bool anchor_first = pane->anchor < pane->caret;
    const bool caret_first = pane->caret < pane->anchor;
    pane->anchor = follow(pane->anchor, change, anchor_first);
    pane->caret = follow(pane->caret, change, caret_first);
    pane->mouse.pressed_on = follow(pane->mouse.pressed_on, change, false);
    pane->mouse.from = follow(pane->mouse.from, change, false);
    pane->mouse.to = follow(pane->mouse.to, change, false);
}
