#include "pane/mouse.h"

#include "pane/characters.h"
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
           GetTickCount() - pane->mouse.used_at < GetDoubleClickTime();
}

// A press can arrive before the text that it is on has been drawn.
bool is_hot(Pane *pane, uint32_t position) {
    need_styles(pane, position + 1);
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

// The word that a double click takes: at a line's end the one in front of it.
Range word_at(const Pane *pane, uint32_t position) {
    const Gap *text = pane_text(pane);
    const uint32_t line = line_of(&pane->document.lines, position);
    if (position < document_line_end(&pane->document, line)) {
        return {word_start(text, position_after(text, position), false),
                word_end(text, position, false)};
    }
    if (position == document_line_start(&pane->document, line)) {
        return {position, position};
    }
    const uint32_t start = word_start(text, position, false);
    return {start, word_end(text, start, false)};
}

Range lines_of(const Pane *pane, uint32_t from, uint32_t to) {
    const Document *document = &pane->document;
    return {document_line_start(document, line_of(&document->lines, from)),
            document_line_start(document, line_of(&document->lines, to) + 1)};
}

Range unit_at(const Pane *pane, uint32_t position) {
    const SelectBy by = pane->mouse.by;
    return by == SelectBy::word   ? word_at(pane, position)
           : by == SelectBy::line ? lines_of(pane, position, position)
                                  : Range{position, position};
}

// How far a selection by words goes back or on for the mouse to be within it.
uint32_t word_edge(const Pane *pane, uint32_t position, bool forward) {
    const Gap *text = pane_text(pane);
    const uint32_t line = line_of(&pane->document.lines, position);
    const uint32_t start = document_line_start(&pane->document, line);
    const uint32_t end = document_line_end(&pane->document, line);
    if (forward) {
        return position > start ? word_end(text, position_before(text, position), false) : position;
    }
    return position != start && position != end
               ? word_start(text, position_after(text, position), false)
               : position;
}

void select_lines_to(Pane *pane, uint32_t position) {
    const Mouse &mouse = pane->mouse;
    if (position < mouse.pressed_on) {
        const Range lines = lines_of(pane, position, mouse.pressed_on);
        select_range(pane, lines.to, lines.from);
    } else {
        const Range lines = lines_of(pane, mouse.pressed_on, position);
        select_range(pane, lines.from, lines.to);
    }
}

void select_words_to(Pane *pane, uint32_t position) {
    const Mouse &mouse = pane->mouse;
    if (position < mouse.from) {
        select_range(pane, mouse.to, word_edge(pane, position, false));
    } else if (position > mouse.to) {
        select_range(pane, mouse.from, word_edge(pane, position, true));
    } else if (position >= mouse.pressed_on) {
        select_range(pane, mouse.from, mouse.to);
    } else {
        select_range(pane, mouse.to, mouse.from);
    }
}

// From what was pressed on to what the mouse is on now.
void select_to(Pane *pane, uint32_t position) {
    if (pane->mouse.by == SelectBy::word && position == pane->mouse.pressed_on) {
        return;
    }
    if (pane->mouse.by == SelectBy::line) {
        select_lines_to(pane, position);
    } else if (pane->mouse.by == SelectBy::word) {
        select_words_to(pane, position);
    } else {
        select_range(pane, pane->anchor, position);
    }
}

void begin_press(Pane *pane, POINT at) {
    pane->mouse.pressed = true;
    pane->mouse.dragging = false;
    pane->mouse.at = at;
    pane->mouse.now = at;
    pane->mouse.used_at = GetTickCount();
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
    mouse->pressed_on = position;
    const Range range = unit_at(pane, layout_position_at(pane, at, Near::character));
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

void press_link(Pane *pane, POINT at, int modifiers) {
    pane->mouse.on_link = on_hot_spot(pane, at);
    if (pane->mouse.on_link) {
        notify_at(pane, SCN_HOTSPOTCLICK, layout_position_at(pane, at, Near::character), modifiers);
    }
}

// In the margin a press takes the whole line.
void press_margin(Pane *pane, POINT at, uint32_t position) {
    const bool extend = (key_modifiers() & SCMOD_SHIFT) != 0;
    pane->mouse.by = SelectBy::line;
    pane->mouse.pressed_on = extend ? pane->anchor : position;
    pane->mouse.on_selected = false;
    begin_press(pane, at);
    select_lines_to(pane, position);
}

void press_once(Pane *pane, POINT at, uint32_t position) {
    Mouse *mouse = &pane->mouse;
    const int modifiers = key_modifiers();
    const bool extend = (modifiers & SCMOD_SHIFT) != 0;
    mouse->by = SelectBy::character;
    press_link(pane, at, modifiers);
    mouse->on_selected = !extend && on_selection(pane, at);
    begin_press(pane, at);
    if (!mouse->on_selected) {
        select_range(pane, extend ? pane->anchor : position, position);
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

// A row beyond the window's border comes into it.
void scroll_to_row(Pane *pane, uint32_t row, bool up) {
    const int lines = static_cast<int>(view_lines(pane));
    view_scroll_to(pane, static_cast<int>(row) - (up ? 0 : lines - 1));
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
    if (at.x < layout_text_left(pane) - 1) {
        press_margin(pane, at, position);
    } else if (!extend && is_double_click(pane, at)) {
        press_again(pane, at, position);
    } else {
        press_once(pane, at, position);
    }
    pane->wanted_x = static_cast<int>(at.x) + pane->view.x_offset;
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
    const uint32_t position = layout_position_at(pane, at, Near::edge);
    select_to(pane, position);
    if (outside(pane, at)) {
        scroll_to_row(pane, layout_row_of(pane, position), at.y < 0);
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
    end_press(pane);
    mouse->at = at;
    mouse->used_at = GetTickCount();
    if (mouse->dragging) {
        drop(pane, position);
    } else if (mouse->on_selected) {
        select_range(pane, position, position);
    } else if (mouse->by == SelectBy::character) {
        select_to(pane, position);
    }
    view_show_caret(pane);
    keep_x(pane);
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
