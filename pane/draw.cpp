#include "pane/draw.h"

#include "pane/characters.h"
#include "pane/layout.h"
#include "pane/styles.h"
#include "pane/utf16.h"
#include "pane/view.h"

namespace {

constexpr COLORREF k_paper = RGB(255, 255, 255);
constexpr COLORREF k_selected = RGB(192, 192, 192);
constexpr uint32_t k_run_characters = 60;

// A line of the screen that is being drawn.
struct Canvas {
    HDC context;
    int height;
    int left;  // x of the line's beginning
};

// Characters that are drawn alike.
struct Run {
    wchar_t units[k_run_characters * 2];
    INT advances[k_run_characters * 2];
    uint32_t count;  // units
    uint32_t slot;   // of their style
    bool selected;
    int from;  // pixels of the line
    int to;
};

bool is_selected(const Pane *pane, uint32_t at) {
    return !pane->selection_hidden && at >= selection_start(pane) && at < selection_end(pane);
}

COLORREF selected_paper(const Pane *pane) {
    return pane->focused ? k_selected : pane->inactive_back;
}

COLORREF paper(const Pane *pane, bool selected) {
    return selected ? selected_paper(pane) : k_paper;
}

void fill(HDC context, int left, int right, int height, COLORREF colour) {
    const RECT area = {left, 0, right, height};
    SetBkColor(context, colour);
    ExtTextOutW(context, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
}

void draw_run(const Pane *pane, const Canvas &canvas, Run *run) {
    if (run->from == run->to) {
        return;
    }
    const Font *font = style_font(&pane->look, run->slot);
    const RECT area = {canvas.left + run->from, 0, canvas.left + run->to, canvas.height};
    SelectObject(canvas.context, font->handle);
    SetTextColor(canvas.context, pane->look.styles[run->slot].fore);
    SetBkColor(canvas.context, paper(pane, run->selected));
    ExtTextOutW(canvas.context, static_cast<int>(area.left), pane->look.ascent - font->ascent,
                ETO_OPAQUE | ETO_CLIPPED, &area, run->units, run->count, run->advances);
    run->count = 0;
    run->from = run->to;
}

// The name of a character without a shape, light on dark.
void draw_name(const Pane *pane, const Canvas &canvas, uint32_t code, const Run &run) {
    const Font *font = style_font(&pane->look, k_default_slot);
    const wchar_t *text = character_name(code);
    const RECT area = {canvas.left + run.from + 1, 1, canvas.left + run.to - 1, canvas.height - 1};
    fill(canvas.context, canvas.left + run.from, canvas.left + run.to, canvas.height,
         paper(pane, run.selected));
    SelectObject(canvas.context, font->handle);
    SetTextColor(canvas.context, paper(pane, run.selected));
    SetBkColor(canvas.context, pane->look.styles[run.slot].fore);
    ExtTextOutW(canvas.context, static_cast<int>(area.left), pane->look.ascent - font->ascent,
                ETO_OPAQUE | ETO_CLIPPED, &area, text, static_cast<UINT>(wcslen(text)), nullptr);
}

// A tab, or a character that has a name instead of a shape.
void draw_alone(const Pane *pane, const Canvas &canvas, uint32_t code, Run *run) {
    if (code == '\t') {
        fill(canvas.context, canvas.left + run->from, canvas.left + run->to, canvas.height,
             paper(pane, run->selected));
    } else {
        draw_name(pane, canvas, code, *run);
    }
    run->from = run->to;
}

void add_to_run(Run *run, uint32_t code, int width) {
    const uint32_t units = utf16_encode(run->units + run->count, code);
    run->advances[run->count] = width;
    if (units > 1) {
        run->advances[run->count + 1] = 0;
    }
    run->count += units;
    run->to += width;
}

bool stands_alone(uint32_t code) {
    return code == '\t' || *character_name(code) != 0;
}

// Where a selection goes on behind a line's end, a blank shows it.
int draw_line_end(const Pane *pane, const Canvas &canvas, const LineRange &range, int x) {
    if (range.end >= pane_length(pane) || !is_selected(pane, range.end)) {
        return x;
    }
    const int wide = style_font(&pane->look, 0)->ascii[' '];
    fill(canvas.context, canvas.left + x, canvas.left + x + wide, canvas.height, paper(pane, true));
    return x + wide;
}

// Draws a part of a line; returns where it ends.
int draw_part(Pane *pane, const Canvas &canvas, const LineRange &range, Break part, uint32_t end) {
    static Run run;  // too large for the stack
    run.count = 0;
    run.from = 0;
    run.to = 0;
    uint32_t x = part.x;
    for (uint32_t at = part.at; at < end && canvas.left + run.to < pane->view.width;) {
        const uint32_t slot = style_slot(document_style(&pane->document, at));
        const bool selected = is_selected(pane, at);
        const uint32_t code = character_at(range.text, at).code;
        if (slot != run.slot || selected != run.selected || stands_alone(code) ||
            run.count >= k_run_characters * 2 - 2) {
            draw_run(pane, canvas, &run);
        }
        run.slot = slot;
        run.selected = selected;
        const uint32_t next = step_width(range, pane->look.widths, &at, x);
        if (stands_alone(code)) {
            run.to += static_cast<int>(next - x);
            draw_alone(pane, canvas, code, &run);
        } else {
            add_to_run(&run, code, static_cast<int>(next - x));
        }
        x = next;
    }
    draw_run(pane, canvas, &run);
    return run.to;
}

void draw_margins(const Pane *pane, const Canvas &canvas) {
    const int text_left = layout_text_left(pane);
    fill(canvas.context, 0, text_left - 1, canvas.height, GetSysColor(COLOR_BTNFACE));
    fill(canvas.context, text_left - 1, text_left, canvas.height, k_paper);
}

void draw_row(Pane *pane, const Canvas &canvas, uint32_t row) {
    int end = 0;
    if (row < layout_line_count(pane)) {
        const Row place = layout_row(pane, row);
        const LineRange range = layout_range(pane, place.line);
        const Breaks *breaks = layout_breaks(pane, place.line);
        const bool last = place.part + 1 >= breaks->count;
        const uint32_t part_end = last ? range.end : breaks->parts[place.part + 1].at;
        end = draw_part(pane, canvas, range, breaks->parts[place.part], part_end);
        end = last ? draw_line_end(pane, canvas, range, end) : end;
    }
    if (canvas.left + end < pane->view.width) {
        fill(canvas.context, canvas.left + end, pane->view.width, canvas.height, k_paper);
    }
    draw_margins(pane, canvas);
}

void draw_rows(Pane *pane, HDC window, const RECT &area, const Canvas &canvas) {
    const int first = static_cast<int>(area.top) / canvas.height;
    for (int y = first * canvas.height; y < area.bottom; y += canvas.height) {
        draw_row(pane, canvas, pane->view.top + static_cast<uint32_t>(y / canvas.height));
        BitBlt(window, 0, y, pane->view.width, canvas.height, canvas.context, 0, 0, SRCCOPY);
    }
}

void draw_area(Pane *pane, HDC window, const RECT &area) {
    HDC memory = CreateCompatibleDC(window);
    const int height = pane->look.line_height;
    HBITMAP bitmap = CreateCompatibleBitmap(window, pane->view.width, height);
    if (memory != nullptr && bitmap != nullptr) {
        HGDIOBJ bitmap_before = SelectObject(memory, bitmap);
        HGDIOBJ font_before = GetCurrentObject(memory, OBJ_FONT);
        const Canvas canvas = {memory, height, layout_text_left(pane) - pane->view.x_offset};
        draw_rows(pane, window, area, canvas);
        SelectObject(memory, font_before);
        SelectObject(memory, bitmap_before);
    }
    DeleteObject(bitmap);
    DeleteDC(memory);
}

// Where the text that is seen ends.
uint32_t seen_end(Pane *pane) {
    return layout_row_end(pane, pane->view.top + view_lines(pane));
}

// Styles may be narrower than those before, so that more is seen.
void style_what_is_seen(Pane *pane) {
    uint32_t end = 0;
    do {
        end = seen_end(pane);
        layout_prepare_styled(pane, end);
    } while (seen_end(pane) > end);
}

}  // namespace

// Whatever voids more of the window comes first, so that it is drawn at once.
void draw_pane(Pane *pane) {
    style_what_is_seen(pane);
    view_scroll_to(pane, static_cast<int>(pane->view.top));
    PAINTSTRUCT paint;
    HDC window = BeginPaint(pane->window, &paint);
    if (paint.rcPaint.right > paint.rcPaint.left && pane->view.width > 0) {
        draw_area(pane, window, paint.rcPaint);
    }
    EndPaint(pane->window, &paint);
    if (!pane->mouse.dragging) {
        view_place_caret(pane);
    }
}
