#include "shell/views.h"

#include "core/busy.h"
#include "core/host_view.h"
#include "file/document.h"
#include "shell/cellname_box.h"
#include "shell/layout.h"
#include "shell/panes/scintilla.h"
#include "shell/panes/styles.h"
#include "shell/panes/text_pane.h"
#include "web/changed.h"

namespace {

void select_tab(TabIndex tab) {
    SendMessageW(pane_window(k_pane_tabs), TCM_SETCURSEL, static_cast<WPARAM>(tab), 0);
}

// A pane whose text does not fit says so and keeps it; another view can still be looked at. While
// output is under way nothing is stored, and the pane keeps its text as well.
void store_before_leaving() {
    if (!is_busy()) {
        try_store_current_text();
    }
}

}  // namespace

void show_view(ViewIndex view) {
    store_before_leaving();
    set_current_view(view);
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
    return tab == k_tab_text ? k_view_text : tab == k_tab_console ? k_view_console : k_view_list;
}

void refresh_current_view() {
    const bool changed = web_changed();
    cellname_box_show_current();
    show_cell_text();
    set_web_changed(changed);
}

void refresh_views() {
    text_pane_forget_cell();
    apply_pane_styles(text_pane());
    apply_pane_styles(console_pane());
    apply_zoom();
    cell_list_clear();
    cell_list_fill();
    refresh_current_view();
}
