// What qvx and the benchmarks define of core/host_messages.h, host_view.h and host_files.h for a
// view and a user to ask: it goes to the view that is shown (cli/host_view_qvx.h). Without one,
// what a program may come to is empty, or the answer that changes nothing. What only a window leads
// to ends the program.
#include "cli/host_view_qvx.h"
#include "core/host_files.h"
#include "core/host_messages.h"
#include "core/host_view.h"
#include "web/trail.h"

#include <string>

namespace {

[[noreturn]] void not_without_view(const char *function) {
    const std::string what = std::string(function) + "(): this program has no view";
    check_failed(what.c_str());
}

// For what only a view leads to.
const HostView *the_view(const char *function) {
    if (host_view() == nullptr) {
        not_without_view(function);
    }
    return host_view();
}

}  // namespace

// ---- Messages and questions ---------------------------------------------------------------------

void set_resting_status(const char *) {}

bool ask_yes_no(const char *text, const char *) {
    return host_view() != nullptr && host_view()->ask_yes_no(text);
}

bool ask_no_yes(const char *text, const char *) {
    return host_view() != nullptr && host_view()->ask_no_yes(text);
}

bool ask_save_changes(const char *text, const char *) {
    return host_view() != nullptr && host_view()->ask_save(text);
}

bool ask_cellname(char *name) {
    return the_view("ask_cellname")->ask_cellname(name);
}

void pump_messages() {}

void output_began(bool) {}

void output_ended() {
    if (host_view() != nullptr) {
        host_view()->output_ended();
    }
}

// ---- The text pane ------------------------------------------------------------------------------

CellHandle store_text_pane(int mode) {
    if (host_view() != nullptr && mode == 1) {
        host_view()->store_text();
    }
    return current_cell();
}

void refresh_current_view() {
    if (host_view() != nullptr) {
        host_view()->show_current();
    }
}

void refresh_views() {
    not_without_view("refresh_views");
}

void selected_text_free() {}

void hide_text_caret() {
    not_without_view("hide_text_caret");
}

// ---- Start-up, links and caption ----------------------------------------------------------------

void configure_panes() {
    not_without_view("configure_panes");
}

void refresh_cellname_list() {
    not_without_view("refresh_cellname_list");
}

void show_cell_list() {
    not_without_view("show_cell_list");
}

void set_window_title(const char *) {
    not_without_view("set_window_title");
}

// ---- The cell list ------------------------------------------------------------------------------

void cell_list_fill() {
    if (host_view() != nullptr) {
        host_view()->list_fill();
    }
}

void cell_list_add(CellHandle cell) {
    the_view("cell_list_add")->list_add(cell);
}

void cell_list_select_current() {
    if (host_view() != nullptr) {
        host_view()->list_select_current();
    }
}

void cell_list_clear() {
    if (host_view() != nullptr) {
        host_view()->list_clear();
    }
}

void cell_list_remove_item(ListItem item) {
    the_view("cell_list_remove_item")->list_remove(item);
}

// ---- Which file ---------------------------------------------------------------------------------

bool ask_open_path(char *, uint32_t) {
    not_without_view("ask_open_path");
}

bool ask_save_path(char *, uint32_t, const char *) {
    not_without_view("ask_save_path");
}
