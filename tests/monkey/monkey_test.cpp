// A monkey at the window: random messages, keys, clicks, commands and answers to what then opens.
// The environment says how many steps (QUORVANE_MONKEY_STEPS) from which seed
// (QUORVANE_MONKEY_SEED).
#include "core/busy.h"
#include "core/recovery.h"
#include "core/text.h"
#include "platform/windows/text_conversion.h"
#include "resources/resource.h"
#include "shell/cellname_box.h"
#include "shell/main_window.h"
#include "shell/output_host.h"
#include "shell/panes/scintilla.h"
#include "shell/panes/text_pane.h"
#include "tests/engine/checker.h"
#include "tests/shell/answers.h"
#include "tests/shell/shell_test.h"
#include "web/cells.h"
#include "web/options.h"
#include "web/trail.h"

#include <atomic>
#include <cstdlib>
#include <vector>

#include <dlgs.h>
#include <shlobj.h>

namespace {

constexpr uint32_t k_kept = 20;
constexpr DWORD k_longest_step = 120000;  // milliseconds; then it hangs
constexpr uint32_t k_looks_to_go = 5;     // that a dialog has for going after it was answered
constexpr int k_still_running = -99;

struct Monkey {
    uint64_t state;  // of what is drawn
    uint32_t seed;
    std::atomic<uint32_t> step;
    std::atomic<DWORD> began_at;  // tick of the step under way
    char kept[k_kept][40];        // the last steps
    bool inside;                  // a step is under way
    uint32_t clones;              // commands that clone, since the last check
    uint32_t lost;                // blocks that clones have lost since the program's start
    WNDPROC window_proc;          // the main window's own
    UINT_PTR timer;
    HWND dialog;     // answered last
    uint32_t looks;  // since then
    uint32_t answers, starts, full, meanwhile;
    DWORD slowest;
} monkey;

// ---- What is drawn ------------------------------------------------------------------------------

// Splitmix64; 0 to n - 1.
uint32_t draw(uint32_t n) {
    uint64_t z = monkey.state += 0x9E3779B97F4A7C15;
    z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9;
    z = (z ^ z >> 27) * 0x94D049BB133111EB;
    return static_cast<uint32_t>((z ^ z >> 31) >> 32) % n;
}

bool percent(uint32_t n) {
    return draw(100) < n;
}

template <typename T> T pick(std::initializer_list<T> list) {
    return list.begin()[draw(static_cast<uint32_t>(list.size()))];
}

std::string random_name() {
    return percent(5) ? "home"
                      : pick({"cell_", "Plan"}) + std::to_string(draw(100)) +
                            std::string(percent(3) ? draw(60) : 0, 'n');
}

// Names, signs, line ends, UTF-8 and bytes that are none.
std::string random_text(uint32_t words) {
    std::string text;
    for (; words > 0; --words) {
        text += percent(60) ? random_name()
                            : pick({"1.5e3", "\\T\\n", "caf\xC3\xA9", "\xF0\x9F\x90\x92", "\xFF",
                                    "</text>", "x", "_"});
        text += pick({" ", " ", " ", ", ", "\n", "\r\n", "\\N", "'", "\""});
    }
    return text;
}

std::string many_lines(size_t length) {
    std::string text;
    while (text.size() < length) {
        text += "words and more words of a long text\n";
    }
    return text;
}

// In the current folder; no other file is read or written.
std::wstring random_file() {
    wchar_t path[MAX_PATH];
    GetFullPathNameW(pick({L"good.qvx", L"full.qvx", L"broken.qvx", L"missing.qvx", L"saved"}),
                     MAX_PATH, path, nullptr);
    return path;
}

HWND random_pane() {
    return percent(70) ? text_pane() : console_pane();
}

LRESULT random_position(HWND pane) {
    return draw(static_cast<uint32_t>(sci(pane, SCI_GETTEXTLENGTH)) + 1);
}

BOOL CALLBACK add_window(HWND window, LPARAM windows) {
    reinterpret_cast<std::vector<HWND> *>(windows)->push_back(window);
    return TRUE;
}

// A pane, the main window, or any control in it, the search bar's too.
HWND random_window() {
    std::vector<HWND> windows = {main_window()};
    EnumChildWindows(main_window(), add_window, reinterpret_cast<LPARAM>(&windows));
    return percent(50) ? pane_window(draw(k_pane_count))
                       : windows[draw(static_cast<uint32_t>(windows.size()))];
}

HWND focus() {
    return GetFocus() != nullptr ? GetFocus() : main_window();
}

// ---- The steps ----------------------------------------------------------------------------------

void drop_file() {
    const std::wstring path = random_file();
    auto *files = static_cast<DROPFILES *>(GlobalAlloc(GPTR, sizeof(DROPFILES) + 2 * MAX_PATH));
    files->pFiles = sizeof *files;
    files->fWide = TRUE;
    lstrcpynW(reinterpret_cast<wchar_t *>(files + 1), path.c_str(), MAX_PATH - 1);
    PostMessageW(main_window(), WM_DROPFILES, reinterpret_cast<WPARAM>(files), 0);
}

// Modifiers count only while the keyboard's state says that they are down.
void press_keys() {
    const WPARAM key =
        percent(40) ? pick<WPARAM>({'A', 'C', 'D', 'F', 'N', 'O', 'S', 'T', 'V', 'X', 'Z'})
                    : pick<WPARAM>({VK_RETURN, VK_TAB, VK_ESCAPE, VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN,
                                    VK_DELETE, VK_BACK, VK_HOME, VK_END, VK_F4, VK_F10, VK_SPACE});
    const int held = pick({0, 0, 0, 0, VK_CONTROL, VK_SHIFT, VK_MENU});
    const UINT system = held == VK_MENU && key != VK_F4 ? WM_SYSKEYDOWN - WM_KEYDOWN : 0;
    BYTE keys[256] = {};
    keys[held] = held != 0 ? 0x80 : 0;
    SetKeyboardState(keys);
    for (uint32_t times = 1 + draw(3); times > 0; --times) {
        PostMessageW(focus(), WM_KEYDOWN + system, key, system ? 1 << 29 : 0);
        PostMessageW(focus(), WM_KEYUP + system, key, system ? 1 << 29 : 0);
    }
    run();
    keys[held] = 0;
    SetKeyboardState(keys);
}

LPARAM random_point(HWND window) {
    RECT client;
    GetClientRect(window, &client);
    const auto x = draw(static_cast<uint32_t>(client.right) + 1);
    return MAKELPARAM(x, draw(static_cast<uint32_t>(client.bottom) + 1));
}

void use_mouse() {
    HWND window = random_window();
    const LPARAM at = random_point(window);
    const UINT second = pick<UINT>({WM_MOUSEMOVE, WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONDBLCLK});
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageW(window, second == WM_MOUSEMOVE ? second : WM_LBUTTONUP, MK_LBUTTON, at);
    PostMessageW(window, second, MK_LBUTTON, percent(70) ? at : random_point(window));
    PostMessageW(window, WM_LBUTTONUP, 0, at);
}

// Now and then so long that few blocks are left, or that it does not fit.
void set_text() {
    std::string text = random_text(1 + draw(12));
    if (percent(2)) {
        text += many_lines(36U * blocks_free() * (98 + draw(4)) / 100);
    }
    const bool whole = percent(60) || sci(text_pane(), SCI_GETTEXTLENGTH) > 500000;
    sci_text(random_pane(), whole ? UINT{SCI_SETTEXT} : UINT{SCI_REPLACESEL}, 0, text.c_str());
}

void select_text() {
    HWND pane = random_pane();
    const LRESULT at = random_position(pane);
    sci(pane, SCI_SETSELECTIONMODE, percent(5) ? SC_SEL_RECTANGLE : SC_SEL_STREAM);
    select(pane, sci(pane, SCI_WORDSTARTPOSITION, at, 1),
           percent(60) ? sci(pane, SCI_WORDENDPOSITION, at, 1) : random_position(pane));
}

void enter_name() {
    const std::string name = percent(90) ? random_name() : random_text(2);
    SetWindowTextW(cellname_edit(), to_utf16(name.c_str()));
    PostMessageW(cellname_edit(), WM_KEYDOWN, VK_RETURN, 0);
}

void choose_entry() {
    SendMessageW(pane_window(k_pane_box), CB_SHOWDROPDOWN, percent(50), 0);
    SendMessageW(pane_window(k_pane_box), CB_SETCURSEL, draw(8), 0);
    SendMessageW(main_window(), WM_COMMAND, MAKEWPARAM(CTL_CELLNAME_BOX, CBN_SELCHANGE), 0);
}

// Long enough, now and then, for something else to happen meanwhile.
void report() {
    std::string format = "\\N ";
    for (uint32_t times = draw(60); times > 0; --times) {
        format += "\\T";
    }
    set_option_rfmt(format.c_str());
    set_option_oname("out");
    set_option_rall(percent(80) ? 1 : 0);
    set_option_rtype(static_cast<uint8_t>(percent(70) ? 1 : 1 + draw(4)));
    set_option_odest(percent(60) ? k_output_console : k_output_file);
    SendMessageW(main_window(), WM_COMMAND, CMD_REPORT, 0);
}

void place_window() {
    ShowWindow(main_window(), pick({SW_MINIMIZE, SW_MAXIMIZE, SW_RESTORE, SW_RESTORE}));
    SetWindowPos(main_window(), nullptr, 0, 0, static_cast<int>(draw(800)),
                 static_cast<int>(draw(700)), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void notify_oddly() {
    const int control = pick<int>({CTL_CELLNAME_BOX, CTL_CELL_LIST, CTL_TEXT_PANE, CTL_NAVIGATION,
                                   CTL_STATUS_LINE, CTL_CONSOLE_PANE, CTL_TABS, 0, 9999});
    const UINT code = pick<UINT>({0, 0U - 700, SCN_STYLENEEDED}) + draw(percent(50) ? 30 : 700);
    uint64_t header[64] = {};
    *reinterpret_cast<NMHDR *>(header) = {GetDlgItem(main_window(), control), 0, code};
    SendMessageW(main_window(), WM_COMMAND, MAKEWPARAM(control, code), 0);
    SendMessageW(main_window(), WM_NOTIFY, static_cast<WPARAM>(control), as_lparam(header));
}

constexpr struct {
    uint32_t weight;
    const char *name;
    void (*act)();  // or null: a message to the main window, with one of so many values
    UINT message = 0;
    WPARAM first = 0;
    uint32_t count = 1;
} k_steps[] = {
    {200, "keys", press_keys},
    {80, "type", [] { type(focus(), random_text(2)); }},
    {250, "mouse", use_mouse},
    {100, "text", set_text},
    {60, "select", select_text},
    {30, "name", enter_name},
    {30, "entry", choose_entry},
    {40, "tab", [] { show_tab(static_cast<int>(draw(3))); }},
    {10, "report", report},
    {10, "place", place_window},
    {10, "focus", [] { SetFocus(random_window()); }},
    {30, "odd", notify_oddly},
    {5, "drop", drop_file},
    {150, "cell", nullptr, WM_COMMAND, CMD_CELL_NEW, 7},
    {40, "edit", nullptr, WM_COMMAND, CMD_SELECT_ALL, 6},
    {30, "pane", nullptr, WM_COMMAND, CMD_NEXT_PANE},
    {15, "help", nullptr, WM_COMMAND, CMD_HELP_OVERVIEW, 16},
    {2, "more help", nullptr, WM_COMMAND, CMD_HELP_MORE},
    {10, "find", nullptr, WM_COMMAND, CMD_FIND},
    {5, "close bar", nullptr, WM_COMMAND, CMD_CLOSE_MODELESS},
    {8, "options", nullptr, WM_COMMAND, CMD_SETTINGS, 2},
    {3, "file", nullptr, WM_COMMAND, CMD_FILE_NEW, 4},
    {5, "no command", nullptr, WM_COMMAND, CMD_SPARE_BUTTON, 900},
    {10, "activate", nullptr, WM_ACTIVATE, 0, 3},
    {10, "activation", nullptr, k_message_activation},
    {5, "enter", nullptr, k_message_name_entered},
    {2, "recover", nullptr, k_message_recover},
    {5, "timer", nullptr, WM_TIMER, 0, 3},
    {5, "setting", nullptr, WM_SETTINGCHANGE, 0, 300},
    {5, "mode", nullptr, WM_CANCELMODE},
    {2, "quit", nullptr, WM_COMMAND, CMD_QUIT},
    {1, "close button", nullptr, WM_SYSCOMMAND, SC_CLOSE},
    {1, "close", nullptr, WM_CLOSE},
    {1, "session", nullptr, WM_QUERYENDSESSION},
};

// No command ever waits in the queue: a dialog's message loop would run it behind the dialog.
void act() {
    uint32_t drawn = draw(1170);
    const auto *step = k_steps;
    for (; drawn >= step->weight; ++step) {
        drawn -= step->weight;
    }
    const WPARAM wparam = step->first + draw(step->count);
    snprintf(monkey.kept[monkey.step % k_kept], sizeof monkey.kept[0], "%s %u", step->name,
             static_cast<unsigned>(wparam));
    if (step->act != nullptr) {
        step->act();
    } else if (step->message == WM_COMMAND) {
        SendMessageW(main_window(), WM_COMMAND, wparam, 0);
    } else {
        PostMessageW(main_window(), step->message, wparam, 0);
    }
}

// What a user can do while a report is written, and what then still works.
void act_meanwhile() {
    if (monkey.inside) {
        monkey.inside = false;
        ++monkey.meanwhile;
        act();
        run();
        monkey.inside = true;
    }
}

// ---- What opens is used by its controls ---------------------------------------------------------

std::wstring class_of(HWND window) {
    wchar_t name[32] = L"";
    GetClassNameW(window, name, 32);
    return name;
}

BOOL CALLBACK find_dialog(HWND window, LPARAM found) {
    const bool is_one =
        class_of(window) == L"#32770" && IsWindowVisible(window) && IsWindowEnabled(window);
    *reinterpret_cast<HWND *>(found) = is_one ? window : nullptr;
    return !is_one;
}

BOOL CALLBACK use_control(HWND control, LPARAM dialog) {
    const LRESULT code = SendMessageW(control, WM_GETDLGCODE, 0, 0);
    if (percent(60) || !IsWindowVisible(control)) {
        return TRUE;
    }
    if (class_of(control) == L"Edit") {
        const std::string text = percent(50) ? random_name() : random_text(draw(12));
        const bool is_file = GetDlgCtrlID(control) == CTL_OUTPUT_NAME;
        SetWindowTextW(control, is_file ? L"out.dat" : to_utf16(text.c_str()));
    } else if (class_of(control) == L"ComboBox") {
        SendMessageW(control, CB_SETCURSEL, draw(10), 0);
    } else if (class_of(control) == WC_TABCONTROLW) {
        PostMessageW(reinterpret_cast<HWND>(dialog), PSM_SETCURSEL, draw(6), 0);
    } else if ((code & DLGC_BUTTON) && !(code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON))) {
        PostMessageW(control, BM_CLICK, 0, 0);
    }
    return TRUE;
}

// The offer to save and exit comes for every block; the program would never see the last one go.
void leave(HWND dialog) {
    wchar_t text[16] = L"";
    GetDlgItemTextW(dialog, 0xFFFF, text, 16);  // of a message box
    if (lstrcmpW(text, L"Short On Memory") == 0 && !percent(1)) {
        press_button(dialog, IDCANCEL);
    } else if (percent(20)) {
        PostMessageW(GetFocus(), WM_KEYDOWN, pick<WPARAM>({VK_ESCAPE, VK_RETURN}), 0);
    } else if (percent(5)) {
        PostMessageW(dialog, WM_CLOSE, 0, 0);
    } else {
        int button = IDOK;
        for (int tries = 0; tries == 0 || (tries < 20 && !GetDlgItem(dialog, button)); ++tries) {
            button = pick({IDOK, IDOK, IDYES, IDNO, IDCANCEL, CTL_REPLACE_CANCEL});
        }
        press_button(dialog, button);
    }
}

void answer_dialog(HWND dialog) {
    HWND file = GetDlgItem(dialog, GetDlgItem(dialog, cmb13) != nullptr ? cmb13 : edt1);
    if (file != nullptr) {
        SetWindowTextW(file, random_file().c_str());
    } else {
        EnumChildWindows(dialog, use_control, reinterpret_cast<LPARAM>(dialog));
    }
    leave(dialog);
}

void answer() {
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), find_dialog, reinterpret_cast<LPARAM>(&dialog));
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetCurrentThreadId(), &info);
    if ((info.flags & (GUI_INMENUMODE | GUI_INMOVESIZE)) != 0 &&
        (dialog == nullptr || percent(30))) {
        ++monkey.answers;
        PostMessageW(main_window(), WM_KEYDOWN,
                     pick<WPARAM>({VK_DOWN, VK_RIGHT, VK_RETURN, VK_ESCAPE, VK_ESCAPE}), 0);
    } else if (is_busy() && (dialog == nullptr || (dialog == cancel_box() && percent(60)))) {
        ++monkey.answers;
        act_meanwhile();
    } else if (dialog != monkey.dialog || ++monkey.looks > k_looks_to_go) {
        monkey.dialog = dialog;
        monkey.looks = 0;
        if (dialog != nullptr) {
            ++monkey.answers;
            answer_dialog(dialog);
        }
    }
}

// Nobody can foresee when it comes, in whatever message loop is under way: it draws numbers of its
// own, so that the steps' stay the same.
void CALLBACK look(HWND, UINT, UINT_PTR, DWORD) {
    const uint64_t state = monkey.state;
    monkey.state = state * 31 + monkey.answers;
    answer();
    monkey.state = state;
}

// ---- What must hold after each step -------------------------------------------------------------

std::string engine_fault() {
    const std::string fault = check_engine(monkey.lost);
    for (; !check_engine(monkey.lost).empty() && monkey.clones > 0; --monkey.clones) {
        ++monkey.lost;
    }
    monkey.clones = 0;
    return check_engine(monkey.lost).empty() ? "" : fault;
}

// `settled`: the box and the cell list have just been told the current cell.
std::string window_fault(bool settled) {
    constexpr size_t k_shown_by_all = 40;  // a name from a file may be longer than the box shows
    std::string name = to_8bit(to_utf16(cell_name_string(current_cell())));
    name.resize(std::min(name.size(), k_shown_by_all));
    const BlockHandle text = cell_text(current_cell());
    std::string stored(text_size(text), 0);
    text_copy_out(stored.data(), text, text_size(text));
    const bool edited = sci(text_pane(), SCI_GETMODIFY) != 0;
    int cells = 0;
    for (CellHandle c = index_first(index_root()); c != 0; c = index_next(c)) {
        cells += is_live_cell(c);
    }
    if (is_busy() || cancel_box() != nullptr || recovery_available() ||
        short_on_memory_offer_open() || !IsWindowEnabled(main_window())) {
        return "something is still under way";
    }
    if (text_pane_cell() != current_cell() || (!edited && pane_text(text_pane()) != stored)) {
        return "the text pane does not show the cell " + name;
    }
    if (settled && (box_text().find(name) != 0 || selected_item().find(name) != 0)) {
        return "box or list do not show the cell " + name;
    }
    return item_count() == cells ? "" : "the list has not as many items as there are cells";
}

[[noreturn]] void give_up(const std::string &fault) {
    const uint32_t last = monkey.step;
    fprintf(stderr, "%s\nseed %u, step %u; the last steps:\n", fault.c_str(), monkey.seed, last);
    for (uint32_t i = last < k_kept ? 0 : last - k_kept + 1; i <= last; ++i) {
        fprintf(stderr, "%8u %s\n", i, monkey.kept[i % k_kept]);
    }
    fflush(stderr);
    TerminateProcess(GetCurrentProcess(), 3);
    abort();
}

LONG WINAPI crashed(EXCEPTION_POINTERS *exception) {
    const auto program = reinterpret_cast<uintptr_t>(GetModuleHandleW(nullptr));
    const auto at = reinterpret_cast<uintptr_t>(exception->ExceptionRecord->ExceptionAddress);
    give_up("crash at the program's address + " + std::to_string(at - program));
}

BOOL CALLBACK print_window(HWND window, LPARAM) {
    wchar_t text[80] = L"";
    InternalGetWindowText(window, text, 80);
    if (IsWindowVisible(window)) {
        fprintf(stderr, "open: %ls%s\n", text, IsWindowEnabled(window) ? "" : " (disabled)");
    }
    return TRUE;
}

DWORD WINAPI watch(void *) {
    while (GetTickCount() - monkey.began_at < k_longest_step) {
        Sleep(1000);
    }
    EnumWindows(print_window, 0);
    give_up("a step does not end");
}

// A clone loses the copy of its cell's view state, on purpose.
LRESULT CALLBACK count_clones(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    monkey.clones += message == WM_COMMAND && LOWORD(wparam) == CMD_CELL_CLONE;
    return CallWindowProcW(monkey.window_proc, window, message, wparam, lparam);
}

uint32_t from_environment(const char *name, uint32_t otherwise) {
    const char *text = getenv(name);
    return text != nullptr ? static_cast<uint32_t>(strtoul(text, nullptr, 10)) : otherwise;
}

struct MonkeyTest : ShellTest {
    void begin() {
        answers_end();
        monkey.lost = monkey.clones = 0;
        ++monkey.starts;
        write_file("good.qvx", web_of("cell_1 Plan1", cell_of("cell_1", "home Plan2")));
        write_file("broken.qvx", web_of("cell_1").substr(0, 40));
        write_file("full.qvx", web_of("Plan3", cell_of("Plan3", many_lines(draw(400000)))));
        monkey.timer = SetTimer(nullptr, 0, 10, look);
        start(web_of("home cell_1 Plan2 free", cell_of("cell_1", "Plan2") + cell_of("Plan2", "")));
        monkey.window_proc = subclass_window(main_window(), count_clones);
    }

    // Where the program was ended, an operation was cut off and has left what it had.
    void begin_again() {
        const bool whole = ended_with() == k_still_running;
        KillTimer(nullptr, monkey.timer);
        TearDown();
        if (whole && blocks_in_use() > monkey.lost + monkey.clones) {
            give_up("blocks are left when there is no web");
        }
        SetUp();
        begin();
    }

    void check() {
        const bool settled = percent(3);
        run();
        if (settled && IsWindow(main_window())) {
            command(CMD_CELL_NEXT);
        }
        if (ended_with() != k_still_running || !IsWindow(main_window())) {
            begin_again();
        }
        monkey.full += blocks_free() < 100;
        const std::string fault = engine_fault() + window_fault(settled);
        if (!fault.empty()) {
            give_up(fault);
        }
    }
};

// Some steps follow the one before at once, while its messages still wait.
TEST_F(MonkeyTest, LeavesEverythingWhole) {
    const uint32_t steps = from_environment("QUORVANE_MONKEY_STEPS", 1500);
    monkey.state = monkey.seed = from_environment("QUORVANE_MONKEY_SEED", 1);
    monkey.began_at = GetTickCount();
    SetUnhandledExceptionFilter(crashed);
    CreateThread(nullptr, 0, watch, nullptr, 0, nullptr);
    CreateDirectoryW(L"files", nullptr);
    ASSERT_TRUE(SetCurrentDirectoryW(L"files"));
    begin();
    for (; monkey.step < steps; ++monkey.step) {
        monkey.began_at = GetTickCount();
        monkey.inside = true;
        act();
        if (percent(75)) {
            check();
        }
        monkey.inside = false;
        monkey.slowest = std::max(monkey.slowest, GetTickCount() - monkey.began_at);
    }
    KillTimer(nullptr, monkey.timer);
    printf("%u steps from seed %u: %u starts, %u answers, %u steps during reports, %u checks with "
           "fewer than 100 blocks free, slowest step %lu ms\n",
           steps, monkey.seed, monkey.starts, monkey.answers, monkey.meanwhile, monkey.full,
           monkey.slowest);
    ASSERT_TRUE(SetCurrentDirectoryW(L".."));
}

}  // namespace
