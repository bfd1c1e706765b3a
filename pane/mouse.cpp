#include "pane/mouse.h"

#include "pane/edit.h"
#include "pane/keys.h"
#include "pane/layout.h"
#include "pane/notify.h"
#include "pane/selection.h"
#include "pane/styles.h"
#include "pane/view.h"
#include "pane/words.h"

namespace {

constexpr WPARAM k_timer_hold = 1;
constexpr WPARAM k_timer_scroll = 2;
constexpr UINT k_hold_milliseconds = 1000;  // until a press opens the menu
constexpr UINT k_scroll_milliseconds = 100;

struct Range {
    uint32_t from;
    uint32_t to;
};

bool within(int a, int b, int metric) {
    const int apart = a > b ? a - b : b - a;
    return apart <= GetSystemMetrics(metric);
}

bool near_press(const Pane *pane, POINT at) {
    return within(static_cast<int>(at.x), static_cast<int>(pane->mouse.at.x), SM_CXDOUBLECLK) &&
           within(static_cast<int>(at.y), static_cast<int>(pane->mouse.at.y), SM_CYDOUBLECLK);
}

bool is_double_click(const Pane *pane, POINT at) {
    return pane->mouse.clicked && near_press(pane, at) &&
           GetTickCount() - pane->mouse.pressed_at < GetDoubleClickTime();
}

bool is_hot(const Pane *pane, uint32_t position) {
    return pane->look.styles[style_slot(document_style(&pane->document, position))].hot_spot;
}

bool on_hot_spot(Pane *pane, POINT at) {
    return layout_hits_character(pane, at) &&
           is_hot(pane, layout_position_at(pane, at, Near::character));
}

bool on_selection(Pane *pane, POINT at) {
    if (selection_empty(pane) || !layout_hits_character(pane, at)) {
        return false;
    }
    const uint32_t position = layout_position_at(pane, at, Near::character);
    return position >= selection_start(pane) && position < selection_end(pane);
}

// What a double or a triple click takes at a position.
Range unit_at(const Pane *pane, uint32_t position) {
    const Document *document = &pane->document;
    if (pane->mouse.by == SelectBy::word) {
        return {word_start(pane_text(pane), position, false),
                word_end(pane_text(pane), position, false)};
    }
    if (pane->mouse.by == SelectBy::line) {
        const uint32_t line = line_of(&document->lines, position);
        return {document_line_start(document, line), document_line_start(document, line + 1)};
    }
    return {position, position};
}

// From what was pressed on to what the mouse is on now.
void select_to(Pane *pane, uint32_t position) {
    const Range now = unit_at(pane, position);
    const Mouse &mouse = pane->mouse;
    if (position >= mouse.from) {
        select_range(pane, mouse.from, now.to > mouse.to ? now.to : mouse.to);
    } else {
        select_range(pane, mouse.to, now.from);
    }
}

void begin_press(Pane *pane, POINT at) {
    pane->mouse.pressed = true;
    pane->mouse.dragging = false;
    pane->mouse.at = at;
    pane->mouse.now = at;
    pane->mouse.pressed_at = GetTickCount();
    pane->mouse.clicked = true;
    SetCapture(pane->window);
}

SelectBy next_unit(SelectBy by) {
    return by == SelectBy::character ? SelectBy::word
           : by == SelectBy::word    ? SelectBy::line
                                     : SelectBy::character;
}

void tell_double_click(Pane *pane, POINT at) {
    SCNotification event = {};
    event.position = layout_hits_character(pane, at)
                         ? static_cast<Sci_Position>(layout_position_at(pane, at, Near::edge))
                         : INVALID_POSITION;
    event.line = static_cast<Sci_Position>(layout_line_at(pane, at));
    event.modifiers = key_modifiers();
    notify(pane, SCN_DOUBLECLICK, &event);
    SendMessageW(pane->window, WM_LBUTTONDBLCLK, 0, MAKELPARAM(at.x, at.y));
}

void press_again(Pane *pane, POINT at, uint32_t position) {
    Mouse *mouse = &pane->mouse;
    mouse->by = next_unit(mouse->by);
    mouse->on_selected = false;
    const Range range = unit_at(pane, position);
    mouse->from = range.from;
    mouse->to = range.to;
    const bool twice = mouse->by == SelectBy::word;
    begin_press(pane, at);
    select_range(pane, range.from, range.to);
    if (twice) {
        tell_double_click(pane, at);
        const uint32_t on = layout_position_at(pane, at, Near::character);
        if (is_hot(pane, on)) {
            notify_at(pane, SCN_HOTSPOTDOUBLECLICK, on, key_modifiers());
        }
    }
}

void press_once(Pane *pane, POINT at, uint32_t position) {
    Mouse *mouse = &pane->mouse;
    const int modifiers = key_modifiers();
    const bool extend = (modifiers & SCMOD_SHIFT) != 0;
    mouse->by = SelectBy::character;
    mouse->on_link = on_hot_spot(pane, at);
    if (mouse->on_link) {
        const uint32_t on = layout_position_at(pane, at, Near::character);
        notify_at(pane, SCN_HOTSPOTCLICK, on, modifiers);
    }
    mouse->on_selected = !extend && on_selection(pane, at);
    begin_press(pane, at);
    if (!mouse->on_selected) {
        select_range(pane, extend ? pane->anchor : position, position);
        mouse->from = pane->anchor;
        mouse->to = pane->anchor;
    }
    if (!mouse->on_link && !extend) {
        SetTimer(pane->window, k_timer_hold, k_hold_milliseconds, nullptr);
    }
}

void stop_timers(const Pane *pane) {
    KillTimer(pane->window, k_timer_hold);
    KillTimer(pane->window, k_timer_scroll);
}

void end_press(Pane *pane) {
    pane->mouse.pressed = false;
    stop_timers(pane);
    if (GetCapture() == pane->window) {
        ReleaseCapture();
    }
}

bool outside(const Pane *pane, POINT at) {
    return at.y < 0 || at.y >= pane->view.height;
}

// Shows where what is dragged would go.
void show_drop(Pane *pane, uint32_t position) {
    const uint32_t row = layout_row_of(pane, position) - pane->view.top;
    SetCaretPos(layout_x_of(pane, position), static_cast<int>(row) * pane->look.line_height);
}

void drag_to(Pane *pane, POINT at) {
    pane->mouse.dragging = pane->mouse.dragging || !near_press(pane, at);
    if (pane->mouse.dragging) {
        KillTimer(pane->window, k_timer_hold);
        show_drop(pane, layout_position_at(pane, at, Near::edge));
    }
}

void drop(Pane *pane, uint32_t position) {
    pane->mouse.dragging = false;
    edit_move_selection(pane, position, (key_modifiers() & SCMOD_CTRL) != 0);
    view_caret_moved(pane);
}

}  // namespace

void mouse_down(Pane *pane, POINT at) {
    SetFocus(pane->window);
    const uint32_t position = layout_position_at(pane, at, Near::edge);
    const bool extend = (key_modifiers() & SCMOD_SHIFT) != 0;
    if (!extend && is_double_click(pane, at)) {
        press_again(pane, at, position);
    } else {
        press_once(pane, at, position);
    }
    pane->wanted_x = static_cast<int>(at.x) + pane->view.x_offset;
    view_show_caret(pane);
}

void mouse_moved(Pane *pane, POINT at) {
    if (!pane->mouse.pressed) {
        return;
    }
    pane->mouse.now = at;
    if (!near_press(pane, at)) {
        KillTimer(pane->window, k_timer_hold);
    }
    if (pane->mouse.on_selected) {
        drag_to(pane, at);
        return;
    }
    select_to(pane, layout_position_at(pane, at, Near::edge));
    view_show_caret(pane);
    if (outside(pane, at)) {
        SetTimer(pane->window, k_timer_scroll, k_scroll_milliseconds, nullptr);
    } else {
        KillTimer(pane->window, k_timer_scroll);
    }
}

void mouse_up(Pane *pane, POINT at) {
    Mouse *mouse = &pane->mouse;
    if (!mouse->pressed) {
        return;
    }
    const uint32_t position = layout_position_at(pane, at, Near::edge);
    if (mouse->on_link && on_hot_spot(pane, at)) {
        notify_at(pane, SCN_HOTSPOTRELEASECLICK, layout_position_at(pane, at, Near::character),
                  key_modifiers() & SCMOD_CTRL);
    }
    end_press(pane);
    if (mouse->dragging) {
        drop(pane, position);
    } else if (mouse->on_selected) {
        select_range(pane, position, position);
    } else {
        select_to(pane, position);
    }
    mouse->on_link = false;
    pane->wanted_x = static_cast<int>(at.x) + pane->view.x_offset;
    view_show_caret(pane);
}

void mouse_lost(Pane *pane) {
    if (pane->mouse.pressed) {
        pane->mouse.pressed = false;
        pane->mouse.dragging = false;
        stop_timers(pane);
        view_caret_moved(pane);
    }
}

void mouse_timer(Pane *pane, WPARAM timer) {
    if (timer == k_timer_scroll) {
        mouse_moved(pane, pane->mouse.now);
    } else if (timer == k_timer_hold) {
        end_press(pane);
        POINT at = pane->mouse.at;
        ClientToScreen(pane->window, &at);
        SendMessageW(pane->window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(pane->window),
                     MAKELPARAM(at.x, at.y));
    }
}

bool mouse_set_pointer(Pane *pane) {
    POINT at;
    GetCursorPos(&at);
    ScreenToClient(pane->window, &at);
    if (at.x < 0 || at.x >= pane->view.width || at.y < 0 || at.y >= pane->view.height) {
        return false;
    }
    SetCursor(LoadCursorW(nullptr, on_hot_spot(pane, at) ? IDC_HAND : IDC_IBEAM));
    return true;
}
