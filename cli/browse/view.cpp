#include "cli/browse/view.h"

#include "cli/browse/ask.h"
#include "cli/browse/list.h"
#include "cli/browse/screen.h"
#include "cli/browse/work.h"
#include "cli/shown.h"
#include "core/host_messages.h"
#include "core/names.h"
#include "core/recovery.h"
#include "core/strings.h"
#include "program/recovery.h"
#include "web/cell_text.h"
#include "web/record.h"
#include "web/trail.h"

#include <algorithm>

static struct BrowseView {
    CellHandle cell = 0;  // whose text the pane shows
    char save_answer = 'c';
    bool offered = false;  // to save and exit, in the work under way
    void (*body)() = nullptr;
} view;

namespace {

constexpr Answers k_yes_or_no = {"yn", 'y', 'n'};
constexpr Answers k_no_by_enter = {"yn", 'n', 'n'};

void run_body(void *) {
    view.body();
}

// ---- Messages and questions ---------------------------------------------------------------------

void show_message(const char *text) {
    screen_message(text);
}

bool ask_yes(const char *text) {
    return ask_letter(std::string(text) + " (Y/n)", k_yes_or_no) == 'y';
}

bool ask_no(const char *text) {
    return ask_letter(std::string(text) + " (y/N)", k_no_by_enter) == 'y';
}

// The engine offers at every allocation to save and exit; once is enough in one piece of work. Its
// own way to save is the window's, so the answer to it is always No.
void offer_to_save_and_exit(const char *text) {
    if (view.offered) {
        return;
    }
    view.offered = true;
    if (ask_no(text) && work_save()) {
        end_program(0);
    }
}

bool ask_ok(const char *text) {
    if (short_on_memory_offer_open()) {
        offer_to_save_and_exit(text);
        return false;
    }
    return ask_no(text);
}

bool ask_save(const char *text) {
    view.save_answer = ask_letter(std::string(text) + " (y)es, (n)o, (c)ancel", {"ync", 'y', 'c'});
    return view.save_answer == 'y';
}

bool ask_name(char *name) {
    name[0] = 0;
    std::string typed;
    if (!ask_line("New cell: ", &typed) || typed.empty()) {
        return false;
    }
    copy_string(name, cellname_start(typed.c_str()), k_cellname_max);
    if (!cellname_valid(name)) {
        name[0] = 0;
        show_warning("Bad cell name supplied", k_product_name);
        return false;
    }
    return true;
}

// ---- The text pane ------------------------------------------------------------------------------

// The pane changes no text: what the user edits is in the cell at once.
void store_text() {
    if (view.cell == 0 || view.cell != current_cell()) {
        return;
    }
    const PaneLink *link = pane_selected(*screen_text());
    const ByteRange selected = link != nullptr ? link->at : ByteRange{0, 0};
    const ViewState state = {static_cast<int32_t>(screen_text()->top),
                             static_cast<int32_t>(selected.begin),
                             static_cast<int32_t>(selected.end)};
    cell_store_view(view.cell, &state);
}

void load_text(CellHandle cell, const ViewState &state) {
    pane_set_text(screen_text(), text_bytes(cell != 0 ? cell_text(cell) : BlockHandle{0}));
    pane_find_links(screen_text(), false);
    pane_scroll(screen_text(), state.first_line);
    if (state.selection_end > state.selection_start) {
        pane_select_link_at(screen_text(), static_cast<size_t>(state.selection_start));
    }
}

// Where the same text is there already it stays as the user sees it.
void show_current() {
    const CellHandle cell = current_cell();
    const ViewState state = cell != 0 ? cell_view(cell) : ViewState{0, 0, 0};
    const BlockHandle text = cell != 0 ? cell_text(cell) : BlockHandle{0};
    if (cell == 0 || cell != view.cell || screen_text()->text != text_bytes(text)) {
        load_text(cell, state);
    }
    view.cell = cell;
}

// ---- The cell list ------------------------------------------------------------------------------

void select_current() {
    list_choose_cell(current_cell());
}

void fill_list() {
    list_fill();
    select_current();
    view_find_links();
}

void add_to_list(CellHandle cell) {
    list_add(cell);
    select_current();
    view_find_links();
}

void remove_from_list(ListItem item) {
    list_remove(static_cast<CellHandle>(item));
    select_current();
    view_find_links();
}

// ---- The console --------------------------------------------------------------------------------

void clear_console() {
    pane_set_text(screen_console(), "");
}

// The text is broken into rows when the output has ended.
void insert(uint32_t position, const char *bytes, uint32_t count) {
    std::string &text = screen_console()->text;
    text.insert(std::min<size_t>(position, text.size()), bytes, count);
}

// A report begins with a line end, which would leave a row of a small screen empty.
void end_output() {
    std::string text = std::move(screen_console()->text);
    text.erase(0, text.find_first_not_of('\n'));
    pane_set_text(screen_console(), std::move(text));
    pane_find_links(screen_console(), true);
    screen_open_console();
}

}  // namespace

const HostView k_browse_view = {
    show_message,     ask_yes,       ask_no,    ask_ok,      ask_save,       ask_name,
    store_text,       show_current,  fill_list, add_to_list, select_current, list_clear,
    remove_from_list, clear_console, insert,    end_output,  terminal_close,
};

bool view_run(void (*body)()) {
    view.body = body;
    view.offered = false;
    if (recovery_run(run_body, nullptr) == 0) {
        return true;
    }
    program_recover();
    return false;
}

char view_save_answer() {
    return view.save_answer;
}

void view_find_links() {
    pane_find_links(screen_text(), false);
    pane_find_links(screen_console(), true);
}
