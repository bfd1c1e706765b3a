// What can be undone and redone: two stacks of actions.
//
// An action that put bytes in needs only where and how many while they stand in the text; they go
// onto the other stack when they are taken out. So a text that was loaded is not kept twice.
#pragma once

#include <cstdint>

struct UndoAction {
    uint32_t position;
    uint32_t length;
    bool removal;
    bool first;   // begins a step, which is what is undone at once
    bool closed;  // its step is not gone on with
};

struct UndoStack {
    char *memory;  // for each action its bytes, when they are out of the text, and the action
    uint32_t used;
    uint32_t size;
    uint32_t count;      // actions
    bool keeps_removed;  // the bytes of removals are here, otherwise those of insertions
};

struct Undo {
    UndoStack done;
    UndoStack undone;
    uint32_t save_point;   // how many actions were done then; or k_no_save_point
    uint32_t group_depth;  // what happens in a group is one step
};

constexpr uint32_t k_no_save_point = 0xFFFFFFFF;  // it cannot be come to any more

void undo_init(Undo *undo);

// Forgets everything; the text is then at its save point. A group that is open stays open.
void undo_forget(Undo *undo);

// What comes behind a group begins a step, even if nothing happened in the group, or what did was
// undone; and so does what comes first in it. Where a group takes back a step from before it, what
// comes next in it goes on with the step before that, unless a group ended there.
void undo_begin_group(Undo *undo);
void undo_end_group(Undo *undo);

void undo_set_save_point(Undo *undo);

inline bool undo_at_save_point(const Undo *undo) {
    return undo->save_point == undo->done.count;
}

// Makes room on a stack for an action of so many bytes; false without memory.
bool undo_reserve(UndoStack *stack, uint32_t length);

// Notes a change that is about to be made, with room made on `done`, and forgets what was undone.
// Returns where the bytes that are taken out go; `first` says whether it begins a step.
char *undo_note(Undo *undo, uint32_t position, uint32_t length, bool removal, bool *first);

// The last action of a stack, which has one, and its bytes when they are there.
UndoAction undo_last(const UndoStack *stack);
const char *undo_last_bytes(const UndoStack *stack);

// Takes the last action off; its bytes stay readable until something is pushed.
void undo_pop(UndoStack *stack);

// Puts an action on, with room made; returns where its bytes go when they are kept there.
char *undo_push(UndoStack *stack, const UndoAction &action);
