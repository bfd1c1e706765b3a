#include "pane/document.h"

#include "pane/characters.h"

#include <cstring>

namespace {

// Room for all that an insertion changes, so that it happens whole or not at all.
bool reserve(Document *document, const char *bytes, uint32_t length) {
    const uint32_t ends_before = document->lines.starts.length;
    if (!gap_reserve(&document->text, length + 1) || !gap_reserve(&document->styles, length) ||
        !lines_reserve(&document->lines, bytes, length)) {
        return false;
    }
    const uint32_t lines = document->lines.starts.capacity - ends_before;
    return visual_reserve(&document->visual, lines);
}

// The lines of the screen follow those of the text; `line` is the one that was changed.
int32_t follow_lines(Document *document, uint32_t line, uint32_t before) {
    const uint32_t now = lines_count(&document->lines);
    if (now > before) {
        visual_insert(&document->visual, line + 1, now - before);
    } else if (now < before) {
        visual_remove(&document->visual, line + 1, before - now);
    }
    return static_cast<int32_t>(now - before);
}

void void_styles(Document *document, uint32_t position) {
    if (document->end_styled > position) {
        document->end_styled = position;
    }
}

void tell(Document *document, const Change &change) {
    document->changing = true;
    document->events.changed(document->events.owner, change);
    document->changing = false;
}

void tell_save_point(Document *document, bool before) {
    const bool now = undo_at_save_point(&document->undo);
    if (now != before) {
        document->events.save_point(document->events.owner, now);
    }
}

void put_in(Document *document, Change *change) {
    const uint32_t at = change->position;
    const uint32_t before = lines_count(&document->lines);
    change->line = line_of(&document->lines, at);  // an LF may go to the CR before
    memcpy(gap_open(&document->text, at, change->length), change->bytes, change->length);
    memset(gap_open(&document->styles, at, change->length), 0, change->length);
    lines_inserted(&document->lines, &document->text, at, change->length);
    change->lines_added = follow_lines(document, change->line, before);
    void_styles(document, at);
}

// At the end nothing is left to be styled anew but the last word.
void take_out(Document *document, Change *change) {
    const uint32_t at = change->position;
    const uint32_t before = lines_count(&document->lines);
    gap_remove(&document->text, at, change->length);
    gap_remove(&document->styles, at, change->length);
    lines_removed(&document->lines, &document->text, at, change->length);
    change->line = line_of(&document->lines, at);
    change->lines_added = follow_lines(document, change->line, before);
    void_styles(document,
                at < document_length(document) ? at : position_before(&document->text, at));
}

// What the user does. Returns where the bytes that go are kept.
char *note(Document *document, Change *change) {
    if (!document->collecting) {
        return nullptr;
    }
    bool first = false;
    const bool removal = (change->kind & k_change_remove) != 0;
    char *kept = undo_note(&document->undo, change->position, change->length, removal, &first);
    change->kind |= first ? k_change_first_action : 0;
    return kept;
}

bool can_note(Document *document, uint32_t kept) {
    return !document->changing &&
           (!document->collecting || undo_reserve(&document->undo.done, kept));
}

// ---- Undo and redo ------------------------------------------------------------------------------

// Moves one action from one stack to the other and does it, or takes it back. False when there is
// no memory for it, or the text has changed since without being noted.
bool move_action(Document *document, UndoStack *from, UndoStack *to, Change *change) {
    const UndoAction action = undo_last(from);
    const char *bytes = undo_last_bytes(from);
    const uint32_t length = document_length(document);
    *change = {change->kind, action.position, action.length, 0, 0, bytes};
    if (action.position > length ||
        (bytes == nullptr && action.length > length - action.position) ||
        !undo_reserve(to, bytes == nullptr ? action.length : 0) ||
        (bytes != nullptr && !reserve(document, bytes, action.length))) {
        return false;
    }
    char *kept = undo_push(to, action);
    if (bytes != nullptr) {
        change->kind |= k_change_insert;
        put_in(document, change);
    } else {
        change->kind |= k_change_remove;
        gap_copy(&document->text, action.position, action.length, kept);
        change->bytes = kept;
        take_out(document, change);
    }
    undo_pop(from);
    return true;
}

// Whether the action that was moved last ends its step.
bool step_ends(const UndoStack *from, const UndoStack *to, bool undoing) {
    return from->count == 0 || (undoing ? undo_last(to).first : undo_last(from).first);
}

// Where the caret belongs behind a change; behind all that came back to one place.
struct Restored {
    uint32_t at;
    uint32_t length;
};

uint32_t caret_behind(const Change &change, Restored *restored) {
    if ((change.kind & k_change_insert) == 0) {
        *restored = {k_nowhere, 0};
        return change.position;
    }
    const bool same_place = (change.kind & k_change_undo) != 0 && restored->at == change.position;
    *restored = {change.position, change.length + (same_place ? restored->length : 0)};
    return restored->at + restored->length;
}

uint32_t move_step(Document *document, UndoStack *from, UndoStack *to, uint32_t kind) {
    const bool undoing = (kind & k_change_undo) != 0;
    const bool at_save_point = undo_at_save_point(&document->undo);
    uint32_t caret = k_nowhere;
    Restored restored = {k_nowhere, 0};
    uint32_t steps = 0;
    bool many_lines = false;
    bool ended = from->count == 0 || document->changing;
    while (!ended) {
        Change change = {kind, 0, 0, 0, 0, nullptr};
        if (!move_action(document, from, to, &change)) {
            break;
        }
        ended = step_ends(from, to, undoing);
        many_lines = many_lines || change.lines_added != 0;
        change.kind |= ++steps > 1 || !ended ? k_change_many_steps : 0;
        change.kind |= ended ? k_change_last_step : 0;
        change.kind |= ended && many_lines ? k_change_many_lines : 0;
        caret = caret_behind(change, &restored);
        tell(document, change);
    }
    tell_save_point(document, at_save_point);
    return caret;
}

}  // namespace

bool document_init(Document *document, const DocumentEvents &events) {
    *document = {};
    document->events = events;
    document->collecting = true;
    gap_init(&document->text, 1);
    gap_init(&document->styles, 1);
    undo_init(&document->undo);
    if (lines_init(&document->lines) && visual_init(&document->visual) &&
        gap_reserve(&document->text, 1) && gap_reserve(&document->styles, 1)) {
        return true;
    }
    document_free(document);
    return false;
}

void document_free(Document *document) {
    gap_free(&document->text);
    gap_free(&document->styles);
    lines_free(&document->lines);
    visual_free(&document->visual);
    undo_forget(&document->undo);
}

const char *document_bytes(Document *document) {
    if (!gap_reserve(&document->text, 1)) {
        return nullptr;
    }
    gap_move_hole(&document->text, document_length(document));
    document->text.memory[document_length(document)] = '\0';
    return document->text.memory;
}

uint32_t document_line_start(const Document *document, uint32_t line) {
    return line < lines_count(&document->lines) ? line_start(&document->lines, line)
                                                : document_length(document);
}

uint32_t document_line_end(const Document *document, uint32_t line) {
    const uint32_t next = document_line_start(document, line + 1);
    if (line + 1 >= lines_count(&document->lines)) {
        return next;
    }
    const bool two = document_byte(document, next - 1) == '\n' && next >= 2 &&
                     document_byte(document, next - 2) == '\r';
    return next - (two ? 2 : 1);
}

bool document_insert(Document *document, uint32_t position, const char *bytes, uint32_t length) {
    if (!can_note(document, 0) || !reserve(document, bytes, length)) {
        return false;
    }
    const bool at_save_point = undo_at_save_point(&document->undo);
    Change change = {k_change_insert | k_change_user, position, length, 0, 0, bytes};
    note(document, &change);
    put_in(document, &change);
    tell_save_point(document, at_save_point);
    tell(document, change);
    return true;
}

bool document_remove(Document *document, uint32_t position, uint32_t length) {
    if (!can_note(document, length)) {
        return false;
    }
    const bool at_save_point = undo_at_save_point(&document->undo);
    Change change = {k_change_remove | k_change_user, position, length, 0, 0, nullptr};
    char *kept = note(document, &change);
    if (kept != nullptr) {
        gap_copy(&document->text, position, length, kept);
        change.bytes = kept;
    }
    take_out(document, &change);
    tell_save_point(document, at_save_point);
    tell(document, change);
    return true;
}

uint32_t document_undo(Document *document) {
    return move_step(document, &document->undo.done, &document->undo.undone, k_change_undo);
}

uint32_t document_redo(Document *document) {
    return move_step(document, &document->undo.undone, &document->undo.done, k_change_redo);
}

void document_set_save_point(Document *document) {
    undo_set_save_point(&document->undo);
    document->events.save_point(document->events.owner, true);
}

bool document_style_next(Document *document, uint32_t length, uint8_t style, uint32_t *from,
                         uint32_t *to) {
    const uint32_t all = document_length(document);
    const uint32_t start = document->styling_at < all ? document->styling_at : all;  // text may go
    const uint32_t end = start + (length < all - start ? length : all - start);
    bool changed = false;
    for (uint32_t at = start; at < end; ++at) {
        char *item = gap_item(&document->styles, at);
        if (static_cast<uint8_t>(*item) != style) {
            *item = static_cast<char>(style);
            *from = changed ? *from : at;
            *to = at + 1;
            changed = true;
        }
    }
    document->styling_at = end;
    document->end_styled = end;
    return changed;
}
