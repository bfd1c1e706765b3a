#include "shell/base/focus.h"

#include "core/host_view.h"
#include "shell/base/handles.h"

static struct Focus {
    HWND panes[k_pane_count];
    HWND search_bar;
    PaneIndex active;
    bool on_search_bar;  // the bar, which is then open, has taken the focus from the active pane
    ViewIndex view;
    ViewIndex previous_view;
} focus;

namespace {

constexpr WPARAM k_box_limit = 128;  // characters typed into the cellname box

PaneIndex pane_of(ViewIndex view) {
    return view == k_view_list      ? k_pane_list
           : view == k_view_console ? k_pane_console
                                    : k_pane_text;
}

}  // namespace

// The bar closes with the main window that it belongs to.
void focus_reset() {
    focus = {};
}

void register_pane(PaneIndex pane, HWND window) {
    focus.panes[pane] = window;
    if (pane == k_pane_box) {
        SendMessageW(window, EM_LIMITTEXT, k_box_limit, 0);
    }
}

HWND pane_window(uint32_t pane) {
    return focus.panes[pane < k_pane_count ? pane : k_pane_box];
}

void register_search_bar(HWND bar) {
    focus.search_bar = bar;
}

HWND search_bar() {
    return focus.search_bar;
}

ViewIndex current_view() {
    return focus.view;
}

ViewIndex previous_view() {
    return focus.previous_view;
}

void set_current_view(ViewIndex view) {
    focus.previous_view = focus.view;
    focus.view = view;
}

PaneIndex active_pane() {
    return focus.active;
}

HWND active_pane_window() {
    return pane_window(focus.active);
}

bool active_pane_is_text() {
    return focus.active == k_pane_text || focus.active == k_pane_console;
}

void set_active_pane(PaneIndex pane) {
    focus.on_search_bar = false;
    switch (pane) {
    case k_pane_box:
    case k_pane_console:
        focus.active = pane;
        break;
    case k_pane_text:
        focus.active = pane;
        ShowCaret(pane_window(k_pane_text));
        break;
    case k_pane_list:
        focus.active = pane;
        cell_list_select_current();
        break;
    default:
        break;
    }
}

bool pane_has_focus(PaneIndex pane) {
    HWND holder = GetFocus();
    return holder != nullptr &&
           (holder == pane_window(pane) || IsChild(pane_window(pane), holder) != 0);
}

void focus_pane(PaneIndex pane) {
    set_active_pane(pane);
    SetFocus(pane_window(pane));
}

void focus_active_pane() {
    focus.on_search_bar = focus.search_bar != nullptr;
    restore_focus();
}

// Without SciLexer.dll a text pane has no window; the main window then takes the keys.
void restore_focus() {
    if (focus.active != k_pane_box) {
        focus.active = pane_of(focus.view);
    }
    HWND target = focus.on_search_bar ? focus.search_bar : active_pane_window();
    if (IsChild(target, GetFocus()) == 0) {
        SetFocus(target != nullptr ? target : main_window());
    }
}

PaneIndex pane_after(PaneIndex pane, ViewIndex view) {
    switch (view) {
    case k_view_list:
        return pane != k_pane_box ? k_pane_box : k_pane_list;
    case k_view_text:
        return pane == k_pane_box ? k_pane_text : k_pane_box;
    case k_view_console:
        return pane != k_pane_box ? k_pane_box : k_pane_console;
    }
    return pane;
}

void cycle_pane() {
    focus.active = pane_after(focus.active, focus.view);
    focus_active_pane();
}
