#include "cli/browse/cell_actions.h"

#include "cli/browse/ask.h"
#include "cli/browse/list.h"
#include "cli/browse/screen.h"
#include "cli/browse/view.h"
#include "cli/browse/work.h"
#include "cli/cells/edited_text.h"
#include "cli/shown.h"
#include "core/host_messages.h"
#include "core/host_view.h"
#include "report/reports.h"
#include "web/cell_ops.h"
#include "web/cell_text.h"
#include "web/changed.h"
#include "web/options.h"
#include "web/record.h"
#include "web/trail.h"

#include <algorithm>

// What the operation under way works on: its body has no locals to lose.
static struct CellActions {
    CellHandle cell = 0;
    std::string name;
    std::string text;
    uint8_t type = 0;
} cells;

namespace {

void follow_body() {
    go_to_link(cells.cell);
}

void open_body() {
    go_to_cell(cells.cell);
}

void go_to_name_body() {
    go_to_name(cells.name.c_str());
}

void new_body() {
    new_cell("");
}

void show_text() {
    screen_set_focus(Part::text);
}

void run_and_show(void (*body)()) {
    view_run(body);
    show_text();
}

// ---- Reports ------------------------------------------------------------------------------------

void report_body() {
    report_run();
}

// A report begins with its own cell: the first of the others is what the user wants to follow.
void select_other_cell() {
    Pane *console = screen_console();
    const auto found =
        std::find_if(console->links.begin(), console->links.end(),
                     [](const PaneLink &link) { return link.cell != current_cell(); });
    if (found != console->links.end()) {
        console->selected = static_cast<size_t>(found - console->links.begin());
    }
}

// The options are the web's, and stay as they are.
void report(uint8_t type) {
    const uint8_t own_type = option_rtype();
    const uint8_t own_destination = option_odest();
    const uint8_t own_all = option_rall();
    set_option_rtype(type);
    set_option_odest(k_output_console);
    set_option_rall(0);
    if (view_run(report_body)) {
        select_other_cell();
    }
    set_option_rtype(own_type);
    set_option_odest(own_destination);
    set_option_rall(own_all);
}

// ---- Editing ------------------------------------------------------------------------------------

void store_body() {
    store_current_text();
    cell_replace_text(cells.cell, cells.text.data(), static_cast<uint32_t>(cells.text.size()));
    set_web_changed(true);
    refresh_current_view();
}

void store_edited(const std::string &edited) {
    cells.text = edited;
    if (view_run(store_body)) {
        drop_edited_file();
    } else {
        name_edited_file();
    }
}

bool must_end() {
    return terminal_hung_up() != 0;
}

// False unless there is another text then; why has been said.
bool edit_on_terminal(const std::string &subject, std::string *text) {
    terminal_lend();
    const Editing result = edit_text(subject, text, must_end);
    terminal_take_back();
    return result == Editing::done;
}

}  // namespace

void cell_follow(CellHandle cell) {
    cells.cell = cell;
    run_and_show(follow_body);
}

void cell_open(CellHandle cell) {
    cells.cell = cell;
    run_and_show(open_body);
}

void cell_back() {
    run_and_show(back);
}

void cell_forward() {
    run_and_show(forward);
}

void cell_home() {
    run_and_show(go_home);
}

void cell_previous() {
    run_and_show(previous_cell);
}

void cell_next() {
    run_and_show(next_cell);
}

void cell_first() {
    run_and_show(first_cell);
}

void cell_last() {
    run_and_show(last_cell);
}

void cell_go_to_name() {
    cells.name.clear();
    if (ask_line("Go to: ", &cells.name) && !cells.name.empty()) {
        run_and_show(go_to_name_body);
    }
}

void cell_new() {
    if (work_may_change()) {
        run_and_show(new_body);
    }
}

void cell_delete_current() {
    if (work_may_change()) {
        run_and_show(delete_cell);
    }
}

void cell_edit() {
    const CellHandle cell = current_cell();
    if (cell == 0 || !work_may_change()) {
        return;
    }
    show_text();
    std::string text = text_bytes(cell_text(cell));
    if (edit_on_terminal(work_file() + ": " + printable(text_bytes(cell_name(cell))), &text)) {
        cells.cell = cell;
        store_edited(text);
    }
}

void cell_in_pointers() {
    report(k_report_inptr);
}

void cell_out_pointers_of() {
    report(k_report_outptr);
}

void cell_trail() {
    report(k_report_trail);
}

void cell_choose_current() {
    list_choose_cell(current_cell());
}
