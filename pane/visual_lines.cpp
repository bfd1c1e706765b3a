#include "pane/visual_lines.h"

namespace {

uint16_t *height_at(const VisualLines *visual, uint32_t line) {
    return reinterpret_cast<uint16_t *>(gap_item(&visual->heights, line));
}

void step_forward(VisualLines *visual) {
    visual->top += *height_at(visual, visual->line++);
}

void step_back(VisualLines *visual) {
    visual->top -= *height_at(visual, --visual->line);
}

void go_to(VisualLines *visual, uint32_t line) {
    if (line < visual->line / 2) {
        visual->line = 0;
        visual->top = 0;
    }
    while (visual->line < line) {
        step_forward(visual);
    }
    while (visual->line > line) {
        step_back(visual);
    }
}

}  // namespace

bool visual_init(VisualLines *visual) {
    *visual = {};
    gap_init(&visual->heights, sizeof(uint16_t));
    if (!gap_reserve(&visual->heights, 1)) {
        return false;
    }
    visual_insert(visual, 0, 1);
    return true;
}

void visual_free(VisualLines *visual) {
    gap_free(&visual->heights);
}

bool visual_reserve(VisualLines *visual, uint32_t count) {
    return gap_reserve(&visual->heights, count);
}

void visual_insert(VisualLines *visual, uint32_t line, uint32_t count) {
    go_to(visual, line);
    uint16_t *heights = reinterpret_cast<uint16_t *>(gap_open(&visual->heights, line, count));
    for (uint32_t i = 0; i < count; ++i) {
        heights[i] = 1;
    }
    visual->total += count;
}

void visual_remove(VisualLines *visual, uint32_t line, uint32_t count) {
    go_to(visual, line);
    for (uint32_t i = line; i < line + count; ++i) {
        visual->total -= *height_at(visual, i);
    }
    gap_remove(&visual->heights, line, count);
}

uint32_t visual_height(const VisualLines *visual, uint32_t line) {
    return *height_at(visual, line);
}

void visual_set_height(VisualLines *visual, uint32_t line, uint32_t height) {
    go_to(visual, line);
    uint16_t *at = height_at(visual, line);
    visual->total += height - *at;
    *at = static_cast<uint16_t>(height);
}

uint32_t visual_top(VisualLines *visual, uint32_t line) {
    go_to(visual, line);
    return visual->top;
}

uint32_t visual_find(VisualLines *visual, uint32_t wanted) {
    while (visual->top > wanted) {
        step_back(visual);
    }
    while (visual->line + 1 < visual->heights.length &&
           visual->top + *height_at(visual, visual->line) <= wanted) {
        step_forward(visual);
    }
    return visual->line;
}
