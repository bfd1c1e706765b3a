#include "shell/views.h"

#include "core/busy.h"
#include "core/host_view.h"
#include "file/document.h"
#include "shell/dialogs/dialogs.h"
#include "shell/layout.h"
#include "shell/main_window.h"

static struct Views {
    HWND panes[k_pane_count];
    PaneIndex active;
    bool on_search_bar;  // the bar, which is then open, has taken the focus from the active pane
    ViewIndex current;
    ViewIndex previous;
} views;

namespace {

constexpr WPARAM k_box_limit = 128;  // characters typed into the cellname box
constexpr int k_tab_list = 0;
constexpr int k_tab_console = 2;

PaneIndex pane_of(ViewIndex view) {
    return view == k_view_list      ? k_pane_list
           : view == k_view_console ? k_pane_console
                                    : k_pane_text;
}

void select_tab(int tab) {
    SendMessageW(pane_window(k_pane_tabs), TCM_SETCURSEL, static_cast<WPARAM>(tab), 0);
}

// A pane whose text does not fit says so and keeps it; another view can still be looked at. While
// output is under way nothing is stored, and the pane keeps its text as well.
void store_before_leaving() {
    if (!is_busy()) {
        store_text_pane_or_say();
    }
}

}  // namespace

void views_reset() {
    views = {};
}

void register_pane(PaneIndex pane, HWND window) {
    views.panes[pane] = window;
    if (pane == k_pane_box) {
        SendMessageW(window, EM_LIMITTEXT, k_box_limit, 0);
    }
}

HWND pane_window(uint32_t pane) {
    return views.panes[pane < k_pane_count ? pane : k_pane_box];
}

PaneIndex active_pane() {
    return views.active;
}

HWND active_pane_window() {
    return pane_window(views.active);
}

bool active_pane_is_text() {
    return views.active == k_pane_text || views.active == k_pane_console;
}

void set_active_pane(PaneIndex pane) {
    views.on_search_bar = false;
    switch (pane) {
    case k_pane_box:
    case k_pane_console:
        views.active = pane;
        break;
    case k_pane_text:
        views.active = pane;
        ShowCaret(pane_window(k_pane_text));
        break;
    case k_pane_list:
        views.active = pane;
        cell_list_select_current();
        break;
    default:
        break;
    }
}

void focus_active_pane() {
    views.on_search_bar = search_bar() != nullptr;
    restore_focus();
}

// Without SciLexer.dll a text pane has no window; the main window then takes the keys.
void restore_focus() {
    if (views.active != k_pane_box) {
        views.active = pane_of(views.current);
    }
    HWND target = views.on_search_bar ? search_bar() : active_pane_window();
    if (!IsChild(target, GetFocus())) {
        SetFocus(target != nullptr ? target : main_window());
    }
}

ViewIndex current_view() {
    return views.current;
}

ViewIndex previous_view() {
    return views.previous;
}

void show_view(ViewIndex view) {
    store_before_leaving();
    views.previous = views.current;
    views.current = view;
    switch (view) {
    case k_view_list:
        place_panes(view);
        set_active_pane(k_pane_list);
        break;
    case k_view_text:
        place_panes(view);
        set_active_pane(k_pane_text);
        break;
    case k_view_console:
        place_panes(view);
        set_active_pane(k_pane_console);
        break;
    default:
        place_panes(k_view_text);
        return;
    }
    focus_active_pane();
}

void show_cell_list() {
    select_tab(k_tab_list);
    show_view(k_view_list);
}

void show_console() {
    select_tab(k_tab_console);
    show_view(k_view_console);
}

ViewIndex view_of_tab(int tab) {
    return tab == 1 ? k_view_text : tab == k_tab_console ? k_view_console : k_view_list;
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
    views.active = pane_after(views.active, views.current);
    focus_active_pane();
}
