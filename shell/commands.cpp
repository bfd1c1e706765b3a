#include "shell/commands.h"

#include "core/busy.h"
#include "core/errors.h"
#include "core/host_messages.h"
#include "core/host_view.h"
#include "file/document.h"
#include "program/file_commands.h"
#include "report/reports.h"
#include "resources/resource.h"
#include "shell/base/focus.h"
#include "shell/cell_commands.h"
#include "shell/cellname_box.h"
#include "shell/dialogs/cancel_box.h"
#include "shell/dialogs/dialogs.h"
#include "shell/help_pages.h"
#include "shell/layout.h"
#include "shell/output_host.h"
#include "shell/panes/scintilla.h"
#include "shell/panes/text_pane.h"
#include "shell/settings/sheet.h"
#include "web/cell_ops.h"
#include "web/options.h"
#include "web/trail.h"

namespace {

struct Command {
    WORD id;
    WORD notification;
};

void on_cellname_box(const Command &command) {
    switch (command.notification) {
    case CBN_DROPDOWN:
        cellname_box_fill_list();
        break;
    case CBN_SELCHANGE:
        cellname_box_list_chosen();
        break;
    default:
        break;
    }
}

// ---- File ---------------------------------------------------------------------------------------

void show_fresh_web() {
    console_clear();
    show_cell_list();
}

void on_file_new(const Command &) {
    const int code = doc_command_new();
    if (code != k_output_in_use && code != k_left_alone) {
        show_fresh_web();
    }
}

// A web that does not fit leaves a new one in its place; every other failure leaves the old one.
void after_open(int code) {
    if (code == 0 || code == k_out_of_memory) {
        refresh_cellname_list();
        show_fresh_web();
    }
}

void on_file_open(const Command &) {
    after_open(doc_command_open());
}

void on_file_save(const Command &) {
    doc_command_save();
}

void on_file_save_as(const Command &) {
    doc_command_save_as();
}

// Output under way is ended first, and the command comes again when it has let go.
void on_quit(const Command &) {
    if (!quit_after_output()) {
        save_and_exit();
    }
}

// ---- Edit ---------------------------------------------------------------------------------------

constexpr struct {
    WORD command;
    UINT message;
} k_editing[] = {
    {CMD_UNDO, SCI_UNDO},   {CMD_CUT, SCI_CUT},      {CMD_COPY, SCI_COPY},
    {CMD_PASTE, SCI_PASTE}, {CMD_DELETE, SCI_CLEAR}, {CMD_REDO, SCI_REDO},
};

void on_editing(const Command &command) {
    for (const auto &row : k_editing) {
        if (row.command == command.id && active_pane_is_text()) {
            sci(active_pane_window(), row.message);
        }
    }
}

void on_select_all(const Command &) {
    sci(active_pane_window(), SCI_SELECTALL);
}

void on_find(const Command &) {
    if (search_bar() != nullptr) {
        show_status_message("Search or Replace already in progress");
    } else {
        open_replace_dialog();
    }
}

void follow_zoom_option() {
    store_text_pane(1);
    apply_zoom();
    relayout();
    refresh_current_view();
}

void on_zoom(const Command &) {
    if (!refused_while_busy() && open_zoom_dialog()) {
        follow_zoom_option();
    }
}

void on_settings(const Command &) {
    if (!refused_while_busy()) {
        open_settings_sheet();
    }
}

// ---- Cell ---------------------------------------------------------------------------------------

void on_cell_clone(const Command &) {
    clone_cell("");
}

void on_cell_delete(const Command &) {
    const CellHandle cell = current_cell();
    delete_cell();
    if (current_cell() != cell) {
        cellname_box_close_list();
    }
}

void on_cell_previous(const Command &) {
    previous_cell();
}

void on_cell_next(const Command &) {
    next_cell();
}

void on_cell_new(const Command &) {
    make_new_cell();
}

void on_follow(const Command &) {
    follow();
}

void on_back(const Command &) {
    back();
    cellname_box_close_list();
}

void on_report(const Command &) {
    report_run();
}

// ---- Help ---------------------------------------------------------------------------------------

void on_help_overview(const Command &) {
    show_help_page(k_help_overview);
}

void on_help_report_format(const Command &) {
    show_help_page(k_help_report_format);
}

void on_help_more(const Command &) {
    show_help_page(k_help_more);
}

void on_help_about(const Command &) {
    open_about_box();
}

// ---- Panes --------------------------------------------------------------------------------------

void take_caret_away() {
    HideCaret(nullptr);
    DestroyCaret();
}

void on_text_pane(const Command &command) {
    switch (command.notification) {
    case SCEN_SETFOCUS:
        set_active_pane(k_pane_text);
        break;
    case SCEN_KILLFOCUS:
        take_caret_away();
        break;
    case SCEN_CHANGE:
        text_pane_changed();
        break;
    default:
        break;
    }
}

void on_console_pane(const Command &command) {
    if (command.notification == SCEN_SETFOCUS) {
        set_active_pane(k_pane_console);
    } else if (command.notification == SCEN_KILLFOCUS) {
        take_caret_away();
    }
}

void on_next_pane(const Command &) {
    cycle_pane();
}

void on_close_modeless(const Command &) {
    HWND dialog = cancel_box() != nullptr ? cancel_box() : search_bar();
    if (dialog != nullptr) {
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    }
}

constexpr struct {
    WORD command;
    void (*handler)(const Command &command);
} k_commands[] = {
    {CTL_CELLNAME_BOX, on_cellname_box},
    {CMD_FILE_NEW, on_file_new},
    {CMD_FILE_OPEN, on_file_open},
    {CMD_FILE_SAVE, on_file_save},
    {CMD_FILE_SAVE_AS, on_file_save_as},
    {CMD_UNDO, on_editing},
    {CMD_REDO, on_editing},
    {CMD_CUT, on_editing},
    {CMD_COPY, on_editing},
    {CMD_PASTE, on_editing},
    {CMD_DELETE, on_editing},
    {CMD_SELECT_ALL, on_select_all},
    {CMD_FIND, on_find},
    {CMD_ZOOM, on_zoom},
    {CMD_HELP_OVERVIEW, on_help_overview},
    {CMD_HELP_REPORT_FORMAT, on_help_report_format},
    {CMD_HELP_MORE, on_help_more},
    {CMD_HELP_ABOUT, on_help_about},
    {CTL_TEXT_PANE, on_text_pane},
    {CTL_CONSOLE_PANE, on_console_pane},
    {CMD_NEXT_PANE, on_next_pane},
    {CMD_CELL_NEW, on_cell_new},
    {CMD_FOLLOW, on_follow},
    {CMD_CELL_CLONE, on_cell_clone},
    {CMD_CELL_DELETE, on_cell_delete},
    {CMD_CELL_PREVIOUS, on_cell_previous},
    {CMD_CELL_NEXT, on_cell_next},
    {CMD_BACK, on_back},
    {CMD_REPORT, on_report},
    {CMD_CLOSE_MODELESS, on_close_modeless},
    {CMD_SETTINGS, on_settings},
    {CMD_QUIT, on_quit},
};

}  // namespace

void run_command(WORD id, WORD notification) {
    for (const auto &row : k_commands) {
        if (row.command == id) {
            row.handler({id, notification});
            return;
        }
    }
}

// The panes tell about the zoom that they are given here too, which is the option's by then.
void pane_zoomed(HWND pane) {
    const int32_t zoom = static_cast<int32_t>(sci(pane, SCI_GETZOOM));
    if (zoom == option_zoom()) {
        return;
    }
    if (refused_while_busy()) {
        apply_zoom();
        return;
    }
    set_option_zoom(zoom);
    follow_zoom_option();
}

void open_web_path(const char *path) {
    after_open(doc_command_open_path(path));
}
