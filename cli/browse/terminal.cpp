#include "cli/browse/terminal.h"

#include "cli/print.h"

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

#define NCURSES_NOMACROS
#include <curses.h>
#include <langinfo.h>
#include <unistd.h>
#include <wchar.h>

static struct Terminal {
    bool open = false;
    bool colours = false;
    volatile sig_atomic_t signal = 0;
    int failures = 0;            // of reading, one behind the other
    struct sigaction stop_here;  // what curses does when the program is stopped
} terminal;

namespace {

constexpr int k_escape_milliseconds = 25;
constexpr int k_failures_max = 100;  // signals interrupt a few; a terminal that has gone, all
constexpr short k_link_pair = 1;
constexpr int k_own_keys = 2000;  // numbers that curses does not use

constexpr struct {
    const char *sequence;
    uint32_t code;
} k_sequences[] = {
    {"\x1b[1;3D", k_key_alt_left},   {"\x1b\x1b[D", k_key_alt_left},
    {"\x1b\x1bOD", k_key_alt_left},  {"\x1b[1;3C", k_key_alt_right},
    {"\x1b\x1b[C", k_key_alt_right}, {"\x1b\x1bOC", k_key_alt_right},
    {"\x1b[1;9D", k_key_alt_left},   {"\x1b[1;9C", k_key_alt_right},
    {"\x1b[Z", k_key_back_tab},      {"\x1b[1~", k_key_home},
    {"\x1b[4~", k_key_end},          {"\x1b[H", k_key_home},
    {"\x1b[F", k_key_end},
};

constexpr struct {
    int key;
    uint32_t code;
} k_keys[] = {
    {KEY_UP, k_key_up},       {KEY_DOWN, k_key_down},     {KEY_LEFT, k_key_left},
    {KEY_RIGHT, k_key_right}, {KEY_PPAGE, k_key_page_up}, {KEY_NPAGE, k_key_page_down},
    {KEY_HOME, k_key_home},   {KEY_END, k_key_end},       {KEY_BACKSPACE, k_key_backspace},
    {KEY_DC, k_key_delete},   {KEY_BTAB, k_key_back_tab}, {KEY_ENTER, k_key_enter},
    {KEY_F(1), k_key_f1},     {KEY_F(3), k_key_f3},       {KEY_RESIZE, k_key_resized},
};

void note_signal(int signal) {
    terminal.signal = signal;
}

// Reading the keyboard ends when one comes, which is not begun anew.
void catch_signals() {
    struct sigaction action = {};
    action.sa_handler = note_signal;
    for (const int signal : {SIGHUP, SIGTERM, SIGINT, SIGQUIT}) {
        sigaction(signal, &action, nullptr);
    }
}

// A locale that says nothing about characters means the ones of today.
void choose_locale() {
    setlocale(LC_CTYPE, "");
    if (strcmp(nl_langinfo(CODESET), "ANSI_X3.4-1968") == 0) {
        setlocale(LC_CTYPE, "C.UTF-8");
    }
}

void define_keys() {
    for (size_t i = 0; i < std::size(k_sequences); ++i) {
        define_key(k_sequences[i].sequence, k_own_keys + static_cast<int>(i));
    }
}

void set_up_screen() {
    raw();
    noecho();
    nonl();
    keypad(stdscr, TRUE);
    set_escdelay(k_escape_milliseconds);
    define_keys();
    mouseinterval(0);
    mousemask(BUTTON1_PRESSED | BUTTON4_PRESSED | BUTTON5_PRESSED, nullptr);
    terminal.colours = colours_wanted() && has_colors() && start_color() == OK;
    if (terminal.colours) {
        use_default_colors();
    }
}

Key mouse_key() {
    MEVENT event;
    if (getmouse(&event) != OK) {
        return {k_key_other, 0, 0};
    }
    const uint32_t code = (event.bstate & BUTTON1_PRESSED) != 0   ? k_key_click
                          : (event.bstate & BUTTON4_PRESSED) != 0 ? k_key_wheel_up
                          : (event.bstate & BUTTON5_PRESSED) != 0 ? k_key_wheel_down
                                                                  : k_key_other;
    return {code, event.y, event.x};
}

uint32_t special_key(int key) {
    if (key >= k_own_keys && key < k_own_keys + static_cast<int>(std::size(k_sequences))) {
        return k_sequences[key - k_own_keys].code;
    }
    for (const auto &row : k_keys) {
        if (row.key == key) {
            return row.code;
        }
    }
    return k_key_other;
}

// What begins with Escape and is no key that is known here: none of its characters is a key.
bool swallow_sequence() {
    nodelay(stdscr, TRUE);
    int byte = getch();
    const bool follows = byte != ERR;
    bool more = byte == '[' || byte == 'O';
    while (more && (byte = getch()) != ERR) {
        more = byte < '@' || byte > '~';
    }
    nodelay(stdscr, FALSE);
    return follows;
}

// The character that begins with this byte; the locale's null character for what is none. (Curses'
// own reading of characters takes the keys that follow a wrong byte for more of it.)
uint32_t character_from(int byte) {
    mbstate_t state = {};
    for (;;) {
        const char next = static_cast<char>(byte);
        wchar_t ch = 0;
        const size_t size = mbrtowc(&ch, &next, 1, &state);
        if (size != static_cast<size_t>(-2)) {
            return size == static_cast<size_t>(-1) ? 0 : static_cast<uint32_t>(ch);
        }
        byte = getch();
        if (byte < 0x80 || byte >= KEY_MIN) {
            if (byte != ERR) {
                ungetch(byte);
            }
            return 0;
        }
    }
}

uint32_t character_key(uint32_t ch) {
    switch (ch) {
    case k_key_escape:
        return swallow_sequence() ? k_key_other : k_key_escape;
    case '\t':
        return k_key_tab;
    case '\n':
        return k_key_enter;
    case 8:
    case 127:
        return k_key_backspace;
    default:
        return ch;
    }
}

attr_t attributes(Style style) {
    switch (style) {
    case k_style_link:
        return A_UNDERLINE | (terminal.colours ? A_BOLD : A_NORMAL);
    case k_style_selected:
    case k_style_status:
        return A_REVERSE;
    case k_style_match:
        return A_REVERSE | A_BOLD;
    case k_style_dim:
        return A_DIM;
    default:
        return A_NORMAL;
    }
}

void set_style(Style style) {
    const bool coloured = style == k_style_link && terminal.colours;
    attr_set(attributes(style), coloured ? k_link_pair : short{0}, nullptr);
}

// A terminal that cannot bring its cursor anywhere shows lines, not screens.
bool can_show_screens() {
    const char *order = tigetstr("cup");
    return order != nullptr && order != reinterpret_cast<const char *>(-1);
}

}  // namespace

bool terminal_is_there() {
    return isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0;
}

bool terminal_open() {
    choose_locale();
    if (newterm(nullptr, stdout, stdin) == nullptr) {
        return false;
    }
    if (!can_show_screens()) {
        endwin();
        return false;
    }
    terminal.open = true;
    set_up_screen();
    catch_signals();
    atexit(terminal_close);
    return true;
}

void terminal_close() {
    if (terminal.open) {
        terminal.open = false;
        endwin();
    }
}

// The other program's user interrupts and stops that one; this one stops with it.
void terminal_lend() {
    def_prog_mode();
    endwin();
    struct sigaction action = {};
    action.sa_handler = SIG_IGN;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGQUIT, &action, nullptr);
    action.sa_handler = SIG_DFL;
    sigaction(SIGTSTP, &action, &terminal.stop_here);
}

void terminal_take_back() {
    sigaction(SIGTSTP, &terminal.stop_here, nullptr);
    catch_signals();
    reset_prog_mode();
    clearok(stdscr, TRUE);
    refresh();
}

void terminal_stop_program() {
    terminal_lend();
    raise(SIGTSTP);
    terminal_take_back();
}

Key terminal_key() {
    if (terminal_hung_up() != 0) {
        return {k_key_hung_up, 0, 0};
    }
    const int key = getch();
    terminal.failures = key != ERR ? 0 : terminal.failures;
    if (key >= KEY_MIN) {
        return key == KEY_MOUSE ? mouse_key() : Key{special_key(key), 0, 0};
    }
    if (key != ERR) {
        return {character_key(character_from(key)), 0, 0};
    }
    ++terminal.failures;
    return {terminal_hung_up() != 0 ? uint32_t{k_key_hung_up} : uint32_t{k_key_other}, 0, 0};
}

int terminal_hung_up() {
    if (terminal.signal != 0) {
        return terminal.signal;
    }
    return terminal.failures > k_failures_max ? k_no_signal : 0;
}

void terminal_end_by(int signal) {
    std::signal(signal, SIG_DFL);
    raise(signal);
}

void terminal_link_colour(int colour) {
    if (terminal.colours) {
        init_pair(k_link_pair, static_cast<short>(colour), -1);
    }
}

int terminal_rows() {
    return LINES;
}

int terminal_columns() {
    return COLS;
}

void terminal_erase() {
    erase();
}

void terminal_put(int row, int column, const wchar_t *text, Style style) {
    set_style(style);
    mvaddwstr(row, column, text);
}

void terminal_fill(int row, int column, int columns, Style style) {
    set_style(style);
    if (columns > 0) {
        mvhline(row, column, ' ' | attributes(style), columns);
    }
}

void terminal_show(int cursor_row, int cursor_column) {
    curs_set(cursor_row >= 0 ? 1 : 0);
    move(cursor_row >= 0 ? cursor_row : LINES - 1, cursor_row >= 0 ? cursor_column : 0);
    refresh();
}
