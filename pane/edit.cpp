#include "pane/edit.h"

#include "pane/characters.h"
#include "pane/layout.h"
#include "pane/notify.h"
#include "pane/selection.h"
#include "pane/view.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr char k_new_line[] = "\r\n";
constexpr uint32_t k_new_line_length = 2;

void begin_step(Pane *pane) {
    undo_begin_group(&pane->document.undo);
}

void end_step(Pane *pane) {
    undo_end_group(&pane->document.undo);
}

void show_after_edit(Pane *pane) {
    view_show_caret(pane);
    keep_x(pane);
}

// SCN_CHARADDED, for each character.
void tell_typed(Pane *pane, const char *bytes, uint32_t length) {
    const Gap typed = {const_cast<char *>(bytes), 1, length, length, length};
    for (uint32_t at = 0; at < length;) {
        const Character one = character_at(&typed, at);
        SCNotification event = {};
        event.ch = static_cast<int>(one.code & ~k_bad_byte);
        notify(pane, SCN_CHARADDED, &event);
        at += one.size;
    }
}

// The character that typing over takes; line ends stay.
uint32_t typed_over(const Pane *pane) {
    const char next = document_byte(&pane->document, pane->caret);
    const bool stays =
        !pane->over_type || pane->caret >= pane_length(pane) || next == '\r' || next == '\n';
    return stays ? pane->caret : position_after(pane_text(pane), pane->caret);
}

void insert_at_caret(Pane *pane, const char *bytes, uint32_t length) {
    const uint32_t at = pane->caret;
    if (edit_insert(pane, at, bytes, length)) {
        select_range(pane, at + length, at + length);
    }
}

void remove_and_show(Pane *pane, uint32_t start, uint32_t end) {
    if (start < end && edit_remove(pane, start, end)) {
        select_range(pane, start, start);
    }
    show_after_edit(pane);
}

void after_undo(Pane *pane, uint32_t caret) {
    select_range(pane, caret, caret);
    view_show_caret(pane);
}

// Lines that come or go above the window leave it where it is, as far as there is enough text. In
// the midst of a step that is undone nothing is seen.
void keep_top(Pane *pane, const Change &change) {
    const bool midway =
        (change.kind & k_change_many_steps) != 0 && (change.kind & k_change_last_step) == 0;
    if (change.lines_added == 0 || midway) {
        return;
    }
    const bool above = change.position < pane->view.top_start;
    const int top = static_cast<int>(pane->view.top) + (above ? change.lines_added : 0);
    view_keep_top(pane, top);
}

}  // namespace

bool edit_insert(Pane *pane, uint32_t position, const char *bytes, uint32_t length) {
    return length == 0 || document_insert(&pane->document, position, bytes, length);
}

bool edit_remove(Pane *pane, uint32_t start, uint32_t end) {
    return start >= end || document_remove(&pane->document, start, end - start);
}

void edit_changed(void *owner, const Change &change) {
    Pane *pane = static_cast<Pane *>(owner);
    layout_follow(pane, change);
    selection_follow(pane, change);
    keep_top(pane, change);
    InvalidateRect(pane->window, nullptr, FALSE);
    notify_change(pane, change);
}

void edit_save_point(void *owner, bool reached) {
    notify_plain(static_cast<Pane *>(owner), reached ? SCN_SAVEPOINTREACHED : SCN_SAVEPOINTLEFT);
}

void edit_set_text(Pane *pane, const char *bytes, uint32_t length) {
    begin_step(pane);
    edit_remove(pane, 0, pane_length(pane));
    select_range(pane, 0, 0);
    edit_insert(pane, 0, bytes, length);
    end_step(pane);
}

void edit_clear_selection(Pane *pane) {
    const uint32_t start = selection_start(pane);
    begin_step(pane);
    if (edit_remove(pane, start, selection_end(pane))) {
        select_range(pane, start, start);
    }
    end_step(pane);
}

void edit_replace_selection(Pane *pane, const char *bytes, uint32_t length) {
    begin_step(pane);
    edit_clear_selection(pane);
    insert_at_caret(pane, bytes, length);
    end_step(pane);
    show_after_edit(pane);
}

void edit_replace_target(Pane *pane, const char *bytes, uint32_t length) {
    const uint32_t start = pane->target_start;
    begin_step(pane);
    edit_remove(pane, start, pane->target_end);
    pane->target_end = edit_insert(pane, start, bytes, length) ? start + length : start;
    end_step(pane);
}

// It goes on with what was typed before; in place of something it is a step of its own.
void edit_type(Pane *pane, const char *bytes, uint32_t length) {
    const uint32_t start = selection_start(pane);
    const uint32_t end = selection_empty(pane) ? typed_over(pane) : selection_end(pane);
    const bool step = pane->over_type || start < end;
    if (step) {
        begin_step(pane);
        edit_remove(pane, start, end);
        select_range(pane, start, start);
    }
    insert_at_caret(pane, bytes, length);
    if (step) {
        end_step(pane);
    }
    show_after_edit(pane);
    tell_typed(pane, bytes, length);
}

void edit_new_line(Pane *pane) {
    const bool step = !selection_empty(pane);
    if (step) {
        begin_step(pane);
        edit_clear_selection(pane);
    }
    insert_at_caret(pane, k_new_line, k_new_line_length);
    if (step) {
        end_step(pane);
    }
    tell_typed(pane, k_new_line, k_new_line_length);
    show_after_edit(pane);
}

void edit_backspace(Pane *pane) {
    if (selection_empty(pane)) {
        remove_and_show(pane, position_before(pane_text(pane), pane->caret), pane->caret);
    } else {
        edit_clear_selection(pane);
        show_after_edit(pane);
    }
}

void edit_delete(Pane *pane) {
    if (selection_empty(pane)) {
        remove_and_show(pane, pane->caret, position_after(pane_text(pane), pane->caret));
    } else {
        edit_clear_selection(pane);
        show_after_edit(pane);
    }
}

// What is selected stays so as far as it is left.
void edit_delete_back_to(Pane *pane, uint32_t start) {
    edit_remove(pane, start, pane->caret);
    show_after_edit(pane);
}

void edit_delete_up_to(Pane *pane, uint32_t end) {
    begin_step(pane);
    select_range(pane, pane->caret, pane->caret);
    edit_remove(pane, pane->caret, end);
    end_step(pane);
    show_after_edit(pane);
}

void edit_undo(Pane *pane) {
    const uint32_t caret = document_undo(&pane->document);
    if (caret != k_nowhere) {
        after_undo(pane, caret);
    }
    keep_x(pane);
}

void edit_redo(Pane *pane) {
    const uint32_t caret = document_redo(&pane->document);
    if (caret != k_nowhere) {
        after_undo(pane, caret);
    }
}

void edit_move_selection(Pane *pane, uint32_t to, bool copy) {
    const uint32_t start = selection_start(pane);
    const uint32_t end = selection_end(pane);
    const uint32_t length = end - start;
    char *bytes = static_cast<char *>(malloc(length + 1));
    if (bytes == nullptr || (to >= start && to <= end && !copy)) {
        free(bytes);
        return;
    }
    gap_copy(pane_text(pane), start, length, bytes);
    begin_step(pane);
    if (!copy && edit_remove(pane, start, end) && to > start) {
        to -= length;
    }
    if (edit_insert(pane, to, bytes, length)) {
        select_range(pane, to, to + length);
    }
    end_step(pane);
    free(bytes);
    show_after_edit(pane);
}
