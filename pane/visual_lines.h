// How many lines of the screen each line of the text takes when it is wrapped, and which line of
// the screen is which.
#pragma once

#include "pane/gap.h"

struct VisualLines {
    Gap heights;     // uint16_t, at least 1
    uint32_t total;  // their sum
    uint32_t line;   // the line that was asked for last, from which the next one is looked for
    uint32_t top;    // its first line of the screen
};

constexpr uint32_t k_height_max = 0xFFFF;

// Begin with one line; false without memory.
bool visual_init(VisualLines *visual);
void visual_free(VisualLines *visual);

// Lines of the text come and go; new ones have one line each. The room is reserved beforehand.
bool visual_reserve(VisualLines *visual, uint32_t count);
void visual_insert(VisualLines *visual, uint32_t line, uint32_t count);
void visual_remove(VisualLines *visual, uint32_t line, uint32_t count);

uint32_t visual_height(const VisualLines *visual, uint32_t line);
void visual_set_height(VisualLines *visual, uint32_t line, uint32_t height);

// The first line of the screen of a line; the line that a line of the screen belongs to, the last
// one when there are fewer.
uint32_t visual_top(VisualLines *visual, uint32_t line);
uint32_t visual_find(VisualLines *visual, uint32_t wanted);
