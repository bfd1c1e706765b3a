#include "cli/browse/actions.h"

#include "cli/browse/ask.h"
#include "cli/browse/cell_actions.h"
#include "cli/browse/find.h"
#include "cli/browse/list.h"
#include "cli/browse/screen.h"
#include "cli/browse/view.h"
#include "cli/browse/work.h"
#include "core/host_messages.h"
#include "core/host_view.h"
#include "file/document.h"
#include "web/changed.h"

#include <cstring>

static struct Actions {
    std::string wanted;  // what was looked for last
    bool left = false;
} actions;

namespace {

constexpr long k_wheel_rows = 3;

long page() {
    return screen_pane()->height > 1 ? screen_pane()->height - 1 : 1;
}

// ---- Moving in a text ---------------------------------------------------------------------------

void row_up() {
    pane_scroll(screen_pane(), -1);
}

void row_down() {
    pane_scroll(screen_pane(), 1);
}

void page_up() {
    pane_scroll(screen_pane(), -page());
}

void page_down() {
    pane_scroll(screen_pane(), page());
}

void to_top() {
    screen_pane()->top = 0;
}

void to_bottom() {
    pane_scroll(screen_pane(), static_cast<long>(screen_pane()->rows.size()));
}

void wheel_up() {
    pane_scroll(screen_pane(), -k_wheel_rows);
}

void wheel_down() {
    pane_scroll(screen_pane(), k_wheel_rows);
}

void next_link() {
    pane_step_link(screen_pane(), true);
}

void previous_link() {
    pane_step_link(screen_pane(), false);
}

// Text and console in turn.
void other_pane() {
    if (screen_console_open()) {
        screen_set_focus(screen_focus() == Part::console ? Part::text : Part::console);
    }
}

void close_console() {
    if (screen_console_open()) {
        screen_close_console();
    }
    screen_text()->match = {0, 0};
}

// ---- Following ----------------------------------------------------------------------------------

// What was followed out of the console shows in the text, and the console stays where there is room
// for both.
void follow() {
    const PaneLink *link = pane_selected(*screen_pane());
    if (link != nullptr) {
        cell_follow(link->cell);
        screen_set_focus(Part::text);
    }
}

void follow_in_list() {
    if (list_shown().empty()) {
        return;
    }
    cell_open(list_shown()[list_chosen()]);
    list_set_filter("");
    screen_set_focus(Part::text);
}

void show_list() {
    list_set_filter("");
    cell_choose_current();
    screen_set_focus(Part::list);
}

void leave_list() {
    list_set_filter("");
    cell_choose_current();
    screen_set_focus(Part::text);
}

void click(const Key &key) {
    const Place place = screen_place(key.row, key.column);
    if (place.part == Part::list) {
        if (place.at < list_shown().size()) {
            list_choose(place.at);
            follow_in_list();
        }
    } else if (place.part != Part::none) {
        screen_set_focus(place.part);
        if (pane_select_link_at(screen_pane(), place.at)) {
            follow();
        }
    }
}

// ---- Finding ------------------------------------------------------------------------------------

void find_again() {
    if (actions.wanted.empty()) {
        show_status_message("Nothing to search for");
    } else if (!find_next(actions.wanted)) {
        screen_message("Not found: " + actions.wanted);
    }
}

// An empty answer is the one given before.
void find_text() {
    std::string typed;
    if (ask_line("Find: ", &typed)) {
        if (!typed.empty()) {
            actions.wanted = typed;
        }
        find_again();
    }
}

// ---- Saving and leaving -------------------------------------------------------------------------

void save() {
    work_save();
}

// A save that is refused leaves the user where he was, with the changes put where they are safe if
// he likes.
bool save_before_leaving() {
    if (work_save()) {
        return true;
    }
    screen_draw();
    const char answer =
        ask_letter("Not saved. Put the changes into a file beside it? (Y/n)", {"yn", 'y', 'n'});
    return answer == 'y' && work_keep_unsaved();
}

void quit() {
    if (!web_changed()) {
        actions.left = true;
        return;
    }
    if (doc_confirm_save()) {
        actions.left = save_before_leaving();
    } else {
        actions.left = view_save_answer() == 'n';
    }
}

void show_help();

// ---- The keys -----------------------------------------------------------------------------------

constexpr struct {
    uint32_t code;
    void (*action)();
    const char *keys;  // in the help; null where another row says it
    const char *help;
} k_rows[] = {
    {k_key_tab, next_link, "Tab, Shift+Tab", "next link, previous link"},
    {k_key_back_tab, previous_link, nullptr, nullptr},
    {k_key_enter, follow, "Enter, click", "follow the link"},
    {k_key_backspace, cell_back, "Backspace, Alt+Left", "back along the trail"},
    {k_key_alt_left, cell_back, nullptr, nullptr},
    {k_key_alt_right, cell_forward, "Alt+Right", "forward again"},
    {k_key_up, row_up, "Up, Down, PgUp, PgDn, Home, End", "scroll"},
    {k_key_down, row_down, nullptr, nullptr},
    {k_key_page_up, page_up, nullptr, nullptr},
    {k_key_page_down, page_down, nullptr, nullptr},
    {' ', page_down, nullptr, nullptr},
    {k_key_home, to_top, nullptr, nullptr},
    {k_key_end, to_bottom, nullptr, nullptr},
    {k_key_wheel_up, wheel_up, nullptr, nullptr},
    {k_key_wheel_down, wheel_down, nullptr, nullptr},
    {'l', show_list, "l", "list of cells: type to filter, Enter opens"},
    {'g', cell_go_to_name, "g", "go to a cell by its name"},
    {'h', cell_home, "h", "home"},
    {'[', cell_previous, "[, ]", "previous cell, next cell"},
    {']', cell_next, nullptr, nullptr},
    {'<', cell_first, "<, >", "first cell, last cell"},
    {'>', cell_last, nullptr, nullptr},
    {'/', find_text, "/", "find in all texts"},
    {k_key_f3, find_again, "F3, / Enter", "find the same again"},
    {'b', cell_in_pointers, "b", "what links here"},
    {'o', cell_out_pointers_of, "o", "what this links to"},
    {'t', cell_trail, "t", "the trail"},
    {k_key_left, other_pane, "Left, Right", "from text to console and back"},
    {k_key_right, other_pane, nullptr, nullptr},
    {k_key_escape, close_console, "Esc", "close the console"},
    {'e', cell_edit, "e", "edit the text"},
    {'n', cell_new, "n", "new cell"},
    {'d', cell_delete_current, "d", "delete this cell"},
    {'w', save, "w, Ctrl+S", "save"},
    {ctrl('s'), save, nullptr, nullptr},
    {ctrl('z'), terminal_stop_program, "Ctrl+Z", "stop, until the shell's fg"},
    {'?', show_help, "?", "this help"},
    {k_key_f1, show_help, nullptr, nullptr},
    {'q', quit, "q", "leave"},
    {ctrl('c'), quit, nullptr, nullptr},
};

void append_help_row(std::string *text, const char *keys, const char *help) {
    text->append(keys).append(": ").append(help).append("\n");
}

void show_help() {
    std::string text;
    for (const auto &row : k_rows) {
        if (row.keys != nullptr) {
            append_help_row(&text, row.keys, row.help);
        }
    }
    text.pop_back();
    pane_set_text(screen_console(), std::move(text));
    screen_open_console();
}

void act_in_text(const Key &key) {
    if (key.code == k_key_click) {
        click(key);
        return;
    }
    for (const auto &row : k_rows) {
        if (row.code == key.code) {
            row.action();
            return;
        }
    }
}

// ---- Keys in the list ---------------------------------------------------------------------------

void move_in_list(long items) {
    const long wanted = static_cast<long>(list_chosen()) + items;
    list_choose(wanted > 0 ? static_cast<size_t>(wanted) : 0);
}

// Keys that move the choice; 0 for others.
long items_of(uint32_t code) {
    constexpr long k_all = 1L << 20;
    switch (code) {
    case k_key_up:
        return -1;
    case k_key_down:
        return 1;
    case k_key_page_up:
        return 1 - terminal_rows();
    case k_key_page_down:
        return terminal_rows() - 1;
    case k_key_home:
        return -k_all;
    case k_key_end:
        return k_all;
    case k_key_wheel_up:
        return -k_wheel_rows;
    case k_key_wheel_down:
        return k_wheel_rows;
    default:
        return 0;
    }
}

void act_in_list(const Key &key) {
    std::string filter = list_filter();
    if (items_of(key.code) != 0) {
        move_in_list(items_of(key.code));
    } else if (key.code == k_key_enter) {
        follow_in_list();
    } else if (key.code == k_key_click) {
        click(key);
    } else if (key.code == k_key_escape || key.code == ctrl('c')) {
        leave_list();
    } else if (type_key(&filter, key.code)) {
        list_set_filter(filter);
    }
}

}  // namespace

bool act_on_key(const Key &key) {
    if (key.code == k_key_resized) {
        return true;
    }
    screen_message("");
    if (screen_focus() == Part::list) {
        act_in_list(key);
    } else {
        act_in_text(key);
    }
    return !actions.left;
}
