#include "pane/view.h"

#include "pane/layout.h"

#include <Scintilla.h>

namespace {

constexpr int k_wheel_lines = 3;
constexpr int k_arrow_pixels = 20;    // by an arrow of the horizontal bar
constexpr int k_scroll_width = 2000;  // pixels, where lines are not broken
constexpr int k_side_slop = 50;       // pixels that the caret keeps from the sides

int limit(int value, int low, int high) {
    return value < low ? low : value > high ? high : value;
}

// Where the top has to be for the caret's line to be seen; the rows of Scintilla's table of
// policies.
int top_for(const CaretPolicy &policy, int line, int top, int lines) {
    const bool strict = (policy.policy & CARET_STRICT) != 0;
    const bool jumps = (policy.policy & CARET_JUMPS) != 0;
    const bool even = (policy.policy & CARET_EVEN) != 0;
    const int half = (lines > 3 ? lines - 1 : 2) / 2;
    const int bottom = top + lines - 1;
    if ((policy.policy & CARET_SLOP) != 0) {
        const int slop = limit(policy.slop, 1, half);
        const int above = jumps ? limit(policy.slop * 3, 1, half) : slop;
        const int below = even ? above : lines - above - 1;
        const int edge_below = even ? slop : lines - slop - 1;
        const int first = strict ? top + slop : top;
        const int last = strict ? bottom - edge_below : bottom;
        return line < first ? line - above : line > last ? line - lines + 1 + below : top;
    }
    if (strict || (jumps && (line < top || line > bottom))) {
        return even ? line - half : line;
    }
    return line < top ? line : line > bottom ? (even ? line - lines + 1 : line) : top;
}

void show_caret_sideways(Pane *pane) {
    if (pane->layout.wrap) {
        return;
    }
    const int x = layout_x_of(pane, pane->caret);
    const int left = layout_text_left(pane);
    const int slop = limit(k_side_slop, 0, (pane->view.width - left) / 2);
    int by = x > pane->view.width - 1 ? x - pane->view.width + slop : 0;
    by = x < left ? x - left - slop : by;
    const int offset = pane->view.x_offset + by;
    if (by != 0) {
        pane->view.x_offset = offset > 0 ? offset : 0;
        InvalidateRect(pane->window, nullptr, FALSE);
    }
}

void scroll_sideways(Pane *pane, int offset) {
    const int most = k_scroll_width - pane->view.width;
    pane->view.x_offset = limit(offset, 0, most > 0 ? most : 0);
    view_update_bars(pane);
    InvalidateRect(pane->window, nullptr, FALSE);
}

int dragged_to(const Pane *pane, int bar) {
    SCROLLINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS;
    GetScrollInfo(pane->window, bar, &info);
    return info.nTrackPos;
}

void set_bar(const Pane *pane, int bar, int last, int page, int position) {
    SCROLLINFO now = {};
    now.cbSize = sizeof now;
    now.fMask = SIF_PAGE | SIF_RANGE | SIF_POS;
    GetScrollInfo(pane->window, bar, &now);
    if (now.nMax != last || now.nPage != static_cast<UINT>(page) || now.nPos != position) {
        SCROLLINFO info = {};
        info.cbSize = sizeof info;
        info.fMask = SIF_PAGE | SIF_RANGE | SIF_POS;
        info.nMax = last;
        info.nPage = static_cast<UINT>(page);
        info.nPos = position;
        SetScrollInfo(pane->window, bar, &info, TRUE);
    }
}

int last_top_now(const Pane *pane) {
    const int lines = static_cast<int>(pane->document.visual.total);
    const int last = lines - (pane->view.end_at_last_line ? static_cast<int>(view_lines(pane)) : 1);
    return last > 0 ? last : 0;
}

}  // namespace

uint32_t view_lines(const Pane *pane) {
    const int height = pane->look.line_height;
    const int lines = height > 0 ? pane->view.height / height : 0;
    return lines > 0 ? static_cast<uint32_t>(lines) : 1;
}

int view_last_top(Pane *pane) {
    layout_prepare(pane);
    return last_top_now(pane);
}

void view_keep_top(Pane *pane, int top) {
    const uint32_t wanted = static_cast<uint32_t>(limit(top, 0, last_top_now(pane)));
    if (wanted != pane->view.top) {
        pane->view.top = wanted;
        layout_note_top(pane);
    }
}

int view_page(const Pane *pane) {
    const int lines = static_cast<int>(view_lines(pane));
    return lines > 1 ? lines - 1 : 1;
}

void view_scroll_to(Pane *pane, int top) {
    const uint32_t wanted = static_cast<uint32_t>(limit(top, 0, view_last_top(pane)));
    if (wanted != pane->view.top) {
        pane->view.top = wanted;
        layout_note_top(pane);
        InvalidateRect(pane->window, nullptr, FALSE);
    }
    view_update_bars(pane);
}

void view_show_caret(Pane *pane) {
    const int line = static_cast<int>(layout_row_of(pane, pane->caret));
    const int top = static_cast<int>(pane->view.top);
    const int wanted = top_for(pane->view.policy, line, top, static_cast<int>(view_lines(pane)));
    if (wanted != top) {
        view_scroll_to(pane, wanted);
    }
    show_caret_sideways(pane);
    view_caret_moved(pane);
}

void view_update_side_bar(const Pane *pane) {
    if (pane->layout.wrap) {
        set_bar(pane, SB_HORZ, 0, 0, 0);
    } else if (pane->view.width > 0) {
        set_bar(pane, SB_HORZ, k_scroll_width, pane->view.width, pane->view.x_offset);
    }
}

void view_update_bars(Pane *pane) {
    const int page = static_cast<int>(view_lines(pane));
    const int last = view_last_top(pane) + page - 1;
    if (pane->view.bar_hidden) {
        set_bar(pane, SB_VERT, 0, 0, 0);
    } else {
        set_bar(pane, SB_VERT, last, page, static_cast<int>(pane->view.top));
    }
    view_update_side_bar(pane);
}

void view_on_vertical_bar(Pane *pane, int code) {
    const int top = static_cast<int>(pane->view.top);
    const int page = view_page(pane);
    switch (code) {
    case SB_LINEUP:
        view_scroll_to(pane, top - 1);
        break;
    case SB_LINEDOWN:
        view_scroll_to(pane, top + 1);
        break;
    case SB_PAGEUP:
        view_scroll_to(pane, top - page);
        break;
    case SB_PAGEDOWN:
        view_scroll_to(pane, top + page);
        break;
    case SB_TOP:
        view_scroll_to(pane, 0);
        break;
    case SB_BOTTOM:
        view_scroll_to(pane, view_last_top(pane));
        break;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
        view_scroll_to(pane, dragged_to(pane, SB_VERT));
        break;
    default:
        break;
    }
}

void view_on_horizontal_bar(Pane *pane, int code) {
    const int offset = pane->view.x_offset;
    switch (code) {
    case SB_LINEUP:
        scroll_sideways(pane, offset - k_arrow_pixels);
        break;
    case SB_LINEDOWN:
        scroll_sideways(pane, offset + k_arrow_pixels);
        break;
    case SB_PAGEUP:
        scroll_sideways(pane, offset - pane->view.width);
        break;
    case SB_PAGEDOWN:
        scroll_sideways(pane, offset + pane->view.width);
        break;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
        scroll_sideways(pane, dragged_to(pane, SB_HORZ));
        break;
    default:
        break;
    }
}

void view_on_wheel(Pane *pane, int turned) {
    pane->view.wheel += turned;
    const int notches = pane->view.wheel / WHEEL_DELTA;
    pane->view.wheel -= notches * WHEEL_DELTA;
    if (notches != 0) {
        view_scroll_to(pane, static_cast<int>(pane->view.top) - notches * k_wheel_lines);
    }
}

// Where lines are not broken their width does not matter.
void view_on_size(Pane *pane, int width, int height) {
    const bool wider = pane->view.width != width;
    pane->view.width = width;
    pane->view.height = height;
    view_keep_top(pane, static_cast<int>(pane->view.top));
    if (wider && pane->layout.wrap) {
        layout_all_changed(pane);
    }
    InvalidateRect(pane->window, nullptr, FALSE);
}

void view_make_caret(Pane *pane) {
    CreateCaret(pane->window, nullptr, 1, pane->look.line_height);
    pane->caret_made = true;
    view_place_caret(pane);
    ShowCaret(pane->window);
}

void view_drop_caret(Pane *pane) {
    if (pane->caret_made) {
        DestroyCaret();
        pane->caret_made = false;
    }
}

void view_place_caret(Pane *pane) {
    if (pane->caret_made) {
        const int row = static_cast<int>(layout_row_of(pane, pane->caret) - pane->view.top);
        SetCaretPos(layout_x_of(pane, pane->caret), row * pane->look.line_height);
    }
}

void view_caret_moved(const Pane *pane) {
    const RECT corner = {0, 0, 1, 1};
    InvalidateRect(pane->window, &corner, FALSE);
}

void view_invalidate(Pane *pane, uint32_t from, uint32_t to) {
    const int height = pane->look.line_height;
    const int top = static_cast<int>(pane->view.top);
    const RECT band = {0, (static_cast<int>(layout_row_of(pane, from)) - top) * height,
                       pane->view.width,
                       (static_cast<int>(layout_row_of(pane, to)) - top + 1) * height};
    InvalidateRect(pane->window, &band, FALSE);
}
