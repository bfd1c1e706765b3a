// What a program without a view, and without a user to ask, defines of core/host_messages.h,
// host_view.h and host_files.h: qvx and the benchmarks. What such a program may come to is empty,
// or the answer that changes nothing; what only a window leads to ends the program.
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

}  // namespace

// ---- Messages and questions ---------------------------------------------------------------------

void set_resting_status(const char *) {}

bool ask_yes_no(const char *, const char *) {
    return false;
}

bool ask_no_yes(const char *, const char *) {
    return false;
}

bool ask_save_changes(const char *, const char *) {
    return false;
}

bool ask_cellname(char *) {
    not_without_view("ask_cellname");
}

void pump_messages() {}

void output_began(bool) {}

void output_ended() {}

// ---- The text pane ------------------------------------------------------------------------------

CellHandle store_text_pane(int) {
    return current_cell();
}

void refresh_current_view() {}

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

void cell_list_fill() {}

void cell_list_add(CellHandle) {
    not_without_view("cell_list_add");
}

void cell_list_select_current() {}

void cell_list_clear() {}

void cell_list_remove_item(ListItem) {
    not_without_view("cell_list_remove_item");
}

// ---- Which file ---------------------------------------------------------------------------------

bool ask_open_path(char *, uint32_t) {
    not_without_view("ask_open_path");
}

bool ask_save_path(char *, uint32_t, const char *) {
    not_without_view("ask_save_path");
}
