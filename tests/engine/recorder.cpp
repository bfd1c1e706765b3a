#include "tests/engine/recorder.h"

#include "core/host_files.h"
#include "file/read_watch.h"
#include "program/recovery.h"
#include "tests/engine/engine_test.h"
#include "web/words.h"

#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// Where a function that must not return goes, while a test awaits it, and what it said.
struct WayOut {
    jmp_buf context;
    bool awaited;
    int status;
    const char *check;
} program_end, check_failure;

// Whether the body took the way.
bool leaves(WayOut *way, const std::function<void()> &body) {
    way->awaited = true;
    if (setjmp(way->context) == 0) {
        body();
        way->awaited = false;
        return false;
    }
    way->awaited = false;
    return true;
}

void note(const std::string &line) {
    host().log.push_back(line);
}

template <typename T> T take(std::deque<T> *answers, T otherwise) {
    if (answers->empty()) {
        return otherwise;
    }
    T answer = answers->front();
    answers->pop_front();
    return answer;
}

bool fill_in(std::deque<std::string> *answers, char *buffer, uint32_t size) {
    std::string answer = take(answers, std::string());
    strncpy(buffer, answer.c_str(), size - 1);
    buffer[size - 1] = 0;
    return !answer.empty();
}

bool ask(std::deque<bool> *answers, const char *call, const char *text, const char *caption) {
    note(std::string(call) + text + "|" + caption);
    return take(answers, false);
}

}  // namespace

Recorder &host() {
    static Recorder recorder;
    return recorder;
}

void start_program() {
    // What an abandoned operation holds must not reach the next program.
    recovery_reset();
    byte_stream_fail_read_after(-1);
    byte_stream_fail_write_after(-1);
    block_arena_fail_after(-1, false);
    web_read_recover();  // which program_recover() leaves to an offer that is open
    program_recover();
    output_clear_stop();
    output_set_path(nullptr);
    web_read_observe(nullptr);
    web_clear();

    host() = Recorder();
    block_arena_allow_recovery(false);
    block_arena_init();
    char_classes_init();
    option_defaults();
    block_arena_allow_recovery(true);
    set_web_changed(false);
    doc_start("");
    output_reset();
    host().log.clear();
}

std::optional<int> run_until_end(const std::function<void()> &body) {
    if (!leaves(&program_end, body)) {
        return std::nullopt;
    }
    recovery_reset();
    return program_end.status;
}

std::string run_until_check_fails(const std::function<void()> &body) {
    if (!leaves(&check_failure, body)) {
        return "";
    }
    std::string what = check_failure.check;
    return what.replace(what.find(':') + 1, what.find(": ") - what.find(':'), "");
}

bool run_command(const std::function<void()> &body) {
    auto call = [](void *argument) { (*static_cast<const std::function<void()> *>(argument))(); };
    if (recovery_run(call, const_cast<std::function<void()> *>(&body)) == 0) {
        return true;
    }
    program_recover();
    return false;
}

void type_text(const std::string &text) {
    host().pane.text = text;
    host().pane.modified = true;
    set_web_changed(true);
}

void at_pump(uint32_t n, const std::function<void()> &run) {
    host().pumps = 0;
    host().on_pump = [=] {
        if (host().pumps == n) {
            run();
        }
    };
}

std::string check_cell_list() {
    if (!host().faults.empty()) {
        return host().faults.front();
    }
    std::vector<CellHandle> cells = live_cells();
    for (CellHandle c : cells) {
        auto item = host().items.find(cell_list_item(c));
        if (item == host().items.end() || item->second != c) {
            return "the cell list has no item for " + name_string(c);
        }
    }
    return cells.size() == host().items.size() ? "" : "the cell list has an item of no live cell";
}

#define SHOWN(function, word, place)                                                               \
    void function(const char *text) {                                                              \
        note(std::string(word " ") + text);                                                        \
        host().place = text;                                                                       \
    }
SHOWN(show_status_message, "status", status)
SHOWN(set_resting_status, "resting", resting)
SHOWN(set_window_title, "title", title)

void show_warning(const char *text, const char *caption) {
    note(std::string("warning ") + text + "|" + caption);
}

bool ask_ok_cancel(const char *text, const char *caption) {
    const bool unlogged = !host().logs_offers && strncmp(text, "Short", 5) == 0;
    return unlogged ? take(&host().ok_cancel, false)
                    : ask(&host().ok_cancel, "ask_ok_cancel ", text, caption);
}

#define ASKED(question, answers)                                                                   \
    bool question(const char *text, const char *caption) {                                         \
        return ask(&host().answers, #question " ", text, caption);                                 \
    }
ASKED(ask_no_yes, yes_no)
ASKED(ask_yes_no, yes_no)
ASKED(ask_save_changes, save_changes)

bool ask_cellname(char *name) {
    note("ask_cellname");
    return fill_in(&host().cellnames, name, k_cellname_max + 1);
}

void end_program(int status) {
    note("end " + std::to_string(status));
    if (!program_end.awaited) {
        abort();  // where no test expected it
    }
    program_end.status = status;
    longjmp(program_end.context, 1);
}

void check_failed(const char *what) {
    if (!check_failure.awaited) {
        fprintf(stderr, "%s\n", what);
        abort();  // each test has a process of its own
    }
    check_failure.check = what;
    longjmp(check_failure.context, 1);
}

// Nothing here may own memory when the arena runs out: the jump runs no destructor.

static void store_pane_text(CellHandle cell) {
    const std::string &text = host().pane.text;
    cell_replace_text(cell, text.data(), static_cast<uint32_t>(text.size()));
    host().pane.modified = false;
}

CellHandle store_text_pane(int mode) {
    note("store " + std::to_string(mode));
    CellHandle cell = current_cell();
    if (mode != 1 || cell == 0) {
        return cell;
    }
    if (host().pane.modified) {
        if (host().pane.shown != cell) {
            host().faults.push_back("a cell's text was stored into another cell");
        }
        store_pane_text(cell);
    }
    ViewState view = {};
    cell_store_view(cell, &view);
    return cell;
}

void refresh_current_view() {
    TextPane *pane = &host().pane;
    CellHandle cell = current_cell();
    note("show " + name_string(cell));
    if (pane->modified && pane->shown == cell) {
        if (cell_text_fits(cell, static_cast<uint32_t>(pane->text.size()))) {
            store_pane_text(cell);
        }
        return;
    }
    pane->text = cell != 0 ? text_string(cell_text(cell)) : "";
    pane->modified = false;
    pane->shown = cell;
    if (cell != 0) {
        cell_view(cell);  // which takes a block
    }
}

void refresh_views() {
    note("refresh_views");
    cell_list_clear();
    cell_list_fill();
    host().pane.modified = false;
    refresh_current_view();
}

const char *selected_text() {
    return host().selected_text.c_str();
}

#define LOGGED(function)                                                                           \
    void function() {                                                                              \
        note(#function);                                                                           \
    }
LOGGED(configure_panes)
LOGGED(refresh_cellname_list)
LOGGED(show_cell_list)
LOGGED(hide_text_caret)
LOGGED(output_ended)
LOGGED(selected_text_free)

static void select_current_item() {
    host().selected_item = current_cell() != 0 ? cell_list_item(current_cell()) : 0;
}

void insert_list_item(CellHandle cell) {
    if (!host().items.insert({cell, cell}).second) {
        host().faults.push_back("a cell stands twice in the cell list");
    }
    cell_set_list_item(cell, cell);
}

void cell_list_fill() {
    note("list_fill");
    for (CellHandle c : live_cells()) {
        insert_list_item(c);
    }
    select_current_item();
}

void cell_list_add(CellHandle cell) {
    note("list_add " + name_string(cell));
    insert_list_item(cell);
    select_current_item();
}

void cell_list_select_current() {
    note("list_select " + name_string(current_cell()));
    select_current_item();
}

void cell_list_clear() {
    note("list_clear");
    host().items.clear();
    host().selected_item = 0;
}

void cell_list_remove_item(ListItem item) {
    note("list_remove " + (host().items.contains(item) ? name_string(host().items[item]) : "-"));
    host().items.erase(item);
}

void console_clear() {
    note("console_clear");
    host().console.clear();
}

void console_insert(uint32_t position, const char *bytes, uint32_t count) {
    if (position > host().console.size() || count > 48) {
        host().faults.push_back("the console was written to behind its end, or too much");
        return;
    }
    host().console.insert(position, bytes, count);
}

void pump_messages() {
    ++host().pumps;
    if (host().on_pump) {
        host().on_pump();
    }
}

void output_began(bool blocks_window) {
    note(blocks_window ? "output_began file" : "output_began console");
}

const char *file_read_mode() {
    return "r+b";
}

bool ask_open_path(char *path, uint32_t size) {
    note(std::string("ask_open_path ") + path);
    return fill_in(&host().open_paths, path, size);
}

bool ask_save_path(char *path, uint32_t size, const char *display_name) {
    note(std::string("ask_save_path ") + path + "|" + display_name);
    return fill_in(&host().save_paths, path, size);
}
