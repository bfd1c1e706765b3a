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

uint32_t follow_insertion(uint32_t position, const Change &change) {
    return position > change.position ? position + change.length : position;
}

uint32_t follow_removal(uint32_t position, const Change &change) {
    if (position <= change.position) {
        return position;
    }
    return position < change.position + change.length ? change.position : position - change.length;
}

uint32_t follow(uint32_t position, const Change &change) {
    return (change.kind & k_change_insert) != 0 ? follow_insertion(position, change)
                                                : follow_removal(position, change);
}

bool is_blank_at(const Pane *pane, uint32_t at) {
    const char c = document_byte(&pane->document, at);
    return c == ' ' || c == '\t';
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

void move_by_rows(Pane *pane, int rows, bool extend) {
    const int row = static_cast<int>(layout_row_of(pane, pane->caret)) + rows;
    const int last = static_cast<int>(layout_line_count(pane)) - 1;
    if (row < 0 || row > last) {
        move_caret(pane, row < 0 ? 0 : pane_length(pane), extend);
        return;
    }
    const int x = pane->wanted_x - pane->view.x_offset;
    move_caret(pane, layout_position_in_row(pane, static_cast<uint32_t>(row), x, Near::edge),
               extend);
}

void move_by_page(Pane *pane, int direction, bool extend) {
    const int by = direction * view_page(pane);
    const int top = static_cast<int>(pane->view.top) + by;
    const int row = static_cast<int>(layout_row_of(pane, pane->caret)) + by;
    move_by_rows(pane, row < 0 ? by - row : by, extend);
    view_scroll_to(pane, top);
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

void selection_follow(Pane *pane, const Change &change) {
    pane->anchor = follow(pane->anchor, change);
    pane->caret = follow(pane->caret, change);
    pane->mouse.from = follow(pane->mouse.from, change);
    pane->mouse.to = follow(pane->mouse.to, change);
}
