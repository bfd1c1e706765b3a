#include "pane/undo.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr uint32_t k_growth = 256;
constexpr uint32_t k_most = 0x40000000;

bool keeps_bytes(const UndoStack *stack, const UndoAction &action) {
    return action.removal == stack->keeps_removed;
}

void stack_free(UndoStack *stack) {
    free(stack->memory);
    *stack = {nullptr, 0, 0, 0, stack->keeps_removed};
}

void forget_undone(Undo *undo) {
    if (undo->save_point != k_no_save_point && undo->save_point > undo->done.count) {
        undo->save_point = k_no_save_point;
    }
    stack_free(&undo->undone);
}

// A key that takes one character out, a line end too, takes at most two bytes.
bool removals_join(const UndoAction &last, uint32_t position, uint32_t length) {
    return length <= 2 && (position + length == last.position || position == last.position);
}

bool goes_on(const Undo *undo, uint32_t position, uint32_t length, bool removal) {
    if (undo->done.count == 0 || undo_at_save_point(undo)) {
        return false;
    }
    const UndoAction last = undo_last(&undo->done);
    if (last.closed || last.removal != removal) {
        return false;
    }
    return removal ? removals_join(last, position, length)
                   : position == last.position + last.length;
}

bool begins_step(const Undo *undo, uint32_t position, uint32_t length, bool removal) {
    if (undo->group_depth > 0) {
        return undo->done.count == 0 || undo_last(&undo->done).closed;
    }
    return !goes_on(undo, position, length, removal);
}

void close_last(UndoStack *stack) {
    if (stack->count == 0) {
        return;
    }
    UndoAction action = undo_last(stack);
    action.closed = true;
    memcpy(stack->memory + stack->used - sizeof action, &action, sizeof action);
}

}  // namespace

void undo_init(Undo *undo) {
    *undo = {};
    undo->done.keeps_removed = true;
}

void undo_forget(Undo *undo) {
    stack_free(&undo->done);
    stack_free(&undo->undone);
    undo->save_point = 0;
}

void undo_begin_group(Undo *undo) {
    if (undo->group_depth++ == 0) {
        close_last(&undo->done);
    }
}

void undo_end_group(Undo *undo) {
    if (undo->group_depth == 1) {
        close_last(&undo->done);
    }
    undo->group_depth -= undo->group_depth > 0 ? 1 : 0;
}

void undo_set_save_point(Undo *undo) {
    undo->save_point = undo->done.count;
}

bool undo_reserve(UndoStack *stack, uint32_t length) {
    if (length > k_most - stack->used - k_growth) {
        return false;
    }
    const uint32_t needed = stack->used + length + static_cast<uint32_t>(sizeof(UndoAction));
    if (needed <= stack->size) {
        return true;
    }
    const uint32_t size = needed + needed / 4 + k_growth;
    char *memory = static_cast<char *>(realloc(stack->memory, size));
    if (memory == nullptr) {
        return false;
    }
    stack->memory = memory;
    stack->size = size;
    return true;
}

char *undo_note(Undo *undo, uint32_t position, uint32_t length, bool removal, bool *first) {
    forget_undone(undo);
    *first = begins_step(undo, position, length, removal);
    return undo_push(&undo->done, {position, length, removal, *first, false});
}

UndoAction undo_last(const UndoStack *stack) {
    UndoAction action;
    memcpy(&action, stack->memory + stack->used - sizeof action, sizeof action);
    return action;
}

const char *undo_last_bytes(const UndoStack *stack) {
    const UndoAction action = undo_last(stack);
    const char *end = stack->memory + stack->used - sizeof action;
    return keeps_bytes(stack, action) ? end - action.length : nullptr;
}

void undo_pop(UndoStack *stack) {
    const UndoAction action = undo_last(stack);
    stack->used -= static_cast<uint32_t>(sizeof action);
    stack->used -= keeps_bytes(stack, action) ? action.length : 0;
    --stack->count;
}

char *undo_push(UndoStack *stack, const UndoAction &action) {
    char *bytes = stack->memory + stack->used;
    char *end = keeps_bytes(stack, action) ? bytes + action.length : bytes;
    memcpy(end, &action, sizeof action);
    stack->used = static_cast<uint32_t>(end - stack->memory) + static_cast<uint32_t>(sizeof action);
    ++stack->count;
    return bytes;
}
