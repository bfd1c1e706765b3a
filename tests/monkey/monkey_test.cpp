// A monkey at the window: random messages, keys, clicks, commands and answers to what then opens.
// The environment says how many steps (QUORVANE_MONKEY_STEPS) from which seed
// (QUORVANE_MONKEY_SEED). Each is printed before it is taken: a run that crashes or hangs shows the
// last ones.
#include "core/busy.h"
#include "core/recovery.h"
#include "shell/dialogs/cancel_box.h"
#include "tests/engine/checker.h"
#include "tests/shell/shell_test.h"

#include <cstdlib>
#include <random>
#include <utility>

#include <dlgs.h>
#include <shlobj.h>

namespace {

constexpr uint32_t k_looks_to_go = 5;  // that a dialog has for going after it was answered

struct Monkey {
    std::minstd_rand random;
    bool inside;          // a step is under way
    uint32_t clones;      // commands that clone, since the last check
    uint32_t lost;        // blocks that clones have lost since the program's start
    WNDPROC window_proc;  // the main window's own
    UINT_PTR timer;
    HWND dialog;       // answered last
    uint32_t looks;    // since then
    uint32_t answers;  // all in all
} monkey;

// ---- What is drawn ------------------------------------------------------------------------------

// 0 to n - 1.
template <typename N> uint32_t draw(N n) {
    return static_cast<uint32_t>(monkey.random() / 8 % static_cast<uint32_t>(n));
}

bool percent(uint32_t n) {
    return draw(100) < n;
}

template <typename T> T pick(std::initializer_list<T> list) {
    return list.begin()[draw(list.size())];
}

std::string random_name() {
    const std::string tail(percent(3) ? draw(60) : 0, 'n');  // names may be too long
    return percent(5) ? "home" : pick({"cell_", "Plan"}) + std::to_string(draw(100)) + tail;
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

std::string lines_of(size_t length) {
    return times(length / 36 + 1, "words and more words of a long text\n");
}

// In the current folder; no other file is read or written.
std::wstring random_file() {
    return fs::absolute(pick({L"good.qvx", L"full.qvx", L"broken.qvx", L"missing.qvx", L"saved"}));
}

HWND random_pane() {
    return percent(70) ? text_pane() : console_pane();
}

// A pane, the main window, or any control in it, the search bar's too.
HWND random_window() {
    std::vector<HWND> windows = controls_of(main_window());
    windows.push_back(main_window());
    return percent(50) ? pane_window(draw(k_pane_count)) : windows[draw(windows.size())];
}

LPARAM random_point(HWND window) {
    RECT client;
    GetClientRect(window, &client);
    const uint32_t x = draw(client.right + 1);
    return MAKELPARAM(x, draw(client.bottom + 1));
}

HWND focus() {
    return GetFocus() != nullptr ? GetFocus() : main_window();
}

// ---- The steps ----------------------------------------------------------------------------------

// Modifiers count only while the keyboard's state says that they are down.
void press_keys() {
    const WPARAM key =
        percent(40) ? pick<WPARAM>({'A', 'C', 'D', 'F', 'N', 'O', 'S', 'T', 'V', 'X', 'Z'})
                    : pick<WPARAM>({VK_RETURN, VK_TAB, VK_ESCAPE, VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN,
                                    VK_DELETE, VK_BACK, VK_HOME, VK_END, VK_F4, VK_F10, VK_SPACE});
    const int held = pick({0, 0, 0, 0, VK_CONTROL, VK_SHIFT, VK_MENU});
    const UINT system = held == VK_MENU && key != VK_F4 ? WM_SYSKEYDOWN - WM_KEYDOWN : 0;
    hold({held});  // 0 is no key
    for (uint32_t presses = 1 + draw(3); presses > 0; --presses) {
        PostMessageW(focus(), WM_KEYDOWN + system, key, system ? 1 << 29 : 0);
        PostMessageW(focus(), WM_KEYUP + system, key, system ? 1 << 29 : 0);
    }
    run();
    hold({});
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
    const std::string more = percent(2) ? lines_of(36U * blocks_free() * (98 + draw(4)) / 100) : "";
    const bool whole = percent(60) || sci(text_pane(), SCI_GETTEXTLENGTH) > 500000;
    sci_text(random_pane(), whole ? UINT{SCI_SETTEXT} : UINT{SCI_REPLACESEL}, 0,
             (random_text(1 + draw(12)) + more).c_str());
}

void select_text() {
    HWND pane = random_pane();
    const LRESULT positions = sci(pane, SCI_GETTEXTLENGTH) + 1;
    const LRESULT at = draw(positions);
    sci(pane, SCI_SETSELECTIONMODE, percent(5) ? SC_SEL_RECTANGLE : SC_SEL_STREAM);
    select(pane, sci(pane, SCI_WORDSTARTPOSITION, at, 1),
           percent(60) ? sci(pane, SCI_WORDENDPOSITION, at, 1) : LRESULT{draw(positions)});
}

// Long enough, now and then, for something else to happen meanwhile.
void report() {
    set_option_rfmt(("\\N " + times(draw(60), "\\T")).c_str());
    set_option_oname("out");
    set_option_rall(percent(80));
    set_option_rtype(static_cast<uint8_t>(percent(70) ? 1 : 1 + draw(4)));
    set_option_odest(percent(60) ? k_output_console : k_output_file);
    SendMessageW(main_window(), WM_COMMAND, CMD_REPORT, 0);
}

void drop_file() {
    auto *files = static_cast<DROPFILES *>(GlobalAlloc(GPTR, sizeof(DROPFILES) + 2 * MAX_PATH));
    files->pFiles = sizeof *files;
    files->fWide = TRUE;
    lstrcpynW(reinterpret_cast<wchar_t *>(files + 1), random_file().c_str(), MAX_PATH - 1);
    PostMessageW(main_window(), WM_DROPFILES, reinterpret_cast<WPARAM>(files), 0);
}

void enter_name() {
    SetWindowTextW(cellname_edit(),
                   to_utf16((percent(90) ? random_name() : random_text(2)).c_str()));
    PostMessageW(cellname_edit(), WM_KEYDOWN, VK_RETURN, 0);
}

void choose_name() {
    SendMessageW(pane_window(k_pane_box), CB_SHOWDROPDOWN, percent(50), 0);
    SendMessageW(pane_window(k_pane_box), CB_SETCURSEL, draw(8), 0);
    SendMessageW(main_window(), WM_COMMAND, CBN_SELCHANGE << 16 | CTL_CELLNAME_BOX, 0);
}

void size_frame() {
    SetWindowPos(main_window(), nullptr, 0, 0, static_cast<int>(draw(800)),
                 static_cast<int>(draw(700)), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void show_frame() {
    ShowWindow(main_window(), pick({SW_MINIMIZE, SW_MAXIMIZE, SW_RESTORE}));
}

// A step acts, or else the main window gets a message with one of `count` values.
struct Step {
    const char *name;
    uint32_t weight;
    void (*act)();
    UINT message = 0;
    WPARAM first = 0;
    uint32_t count = 1;
};

constexpr Step k_steps[] = {
    {"keys", 200, press_keys},
    {"type", 80, [] { type(focus(), random_text(2)); }},
    {"mouse", 250, use_mouse},
    {"text", 100, set_text},
    {"select", 60, select_text},
    {"box", 30, enter_name},
    {"box list", 30, choose_name},
    {"tab", 40, [] { show_tab(static_cast<int>(draw(3))); }},
    {"report", 10, report},
    {"frame", 9, size_frame},
    {"show", 6, show_frame},
    {"focus", 10, [] { SetFocus(random_window()); }},
    {"drop", 5, drop_file},
    {"own", 8, [] { PostMessageW(main_window(), k_message_start + 1 + draw(4), 0, 0); }},
    {"timer", 5, nullptr, WM_TIMER, 0, 300},
    {"settings", 5, nullptr, WM_SETTINGCHANGE},
    {"cancel mode", 5, nullptr, WM_CANCELMODE},
    {"activation", 10, nullptr, WM_ACTIVATE, 0, 3},
    {"panel", 10, nullptr, k_message_activation, 0, 3},
    {"close button", 1, nullptr, WM_SYSCOMMAND, SC_CLOSE},
    {"close", 1, nullptr, WM_CLOSE},
    {"log off", 1, nullptr, WM_QUERYENDSESSION},
    {"cell", 150, nullptr, WM_COMMAND, CMD_CELL_NEW, 7},
    {"edit", 40, nullptr, WM_COMMAND, CMD_SELECT_ALL, 6},
    {"help", 20, nullptr, WM_COMMAND, CMD_HELP_OVERVIEW, 16},
    {"pane", 30, nullptr, WM_COMMAND, CMD_NEXT_PANE},
    {"find", 12, nullptr, WM_COMMAND, CMD_FIND},
    {"close bar", 6, nullptr, WM_COMMAND, CMD_CLOSE_MODELESS},
    {"options", 8, nullptr, WM_COMMAND, CMD_SETTINGS, 2},
    {"file", 3, nullptr, WM_COMMAND, CMD_FILE_NEW, 4},
    {"no command", 5, nullptr, WM_COMMAND, CMD_SPARE_BUTTON, 900},
    {"quit", 2, nullptr, WM_COMMAND, CMD_QUIT},
};

// No command ever waits in the queue: a dialog's message loop would run it behind the dialog.
void take_step() {
    std::vector<const Step *> lots;
    for (const Step &step : k_steps) {
        lots.insert(lots.end(), step.weight, &step);
    }
    const Step *step = lots[draw(lots.size())];
    puts(step->name);
    fflush(stdout);
    const WPARAM value = step->first + draw(step->count);
    if (step->act != nullptr) {
        step->act();
    } else if (step->message == WM_COMMAND) {
        SendMessageW(main_window(), WM_COMMAND, value, 0);
    } else {
        PostMessageW(main_window(), step->message, value, 0);
    }
}

// ---- What opens is used by its controls ---------------------------------------------------------

void use_control(HWND dialog, HWND control) {
    const LRESULT code = SendMessageW(control, WM_GETDLGCODE, 0, 0);
    if (class_of(control) == L"Edit") {
        const std::string text = percent(50) ? random_name() : random_text(draw(12));
        const bool is_file = GetDlgCtrlID(control) == CTL_OUTPUT_NAME;
        SetWindowTextW(control, is_file ? L"out.dat" : to_utf16(text.c_str()));
    } else if (class_of(control) == L"ComboBox") {
        SendMessageW(control, CB_SETCURSEL, draw(10), 0);
    } else if (class_of(control) == WC_TABCONTROLW) {
        PostMessageW(dialog, PSM_SETCURSEL, draw(6), 0);
    } else if ((code & DLGC_BUTTON) && !(code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON))) {
        PostMessageW(control, BM_CLICK, 0, 0);
    }
}

// The offer to save and exit comes for every block; the program would never see the last one go.
void leave(HWND dialog) {
    wchar_t text[16] = L"";
    GetDlgItemTextW(dialog, 0xFFFF, text, 16);  // of a message box
    const bool is_offer = lstrcmpW(text, L"Short On Memory") == 0 && !percent(1);
    if (!is_offer && percent(20)) {
        PostMessageW(GetFocus(), WM_KEYDOWN, pick<WPARAM>({VK_ESCAPE, VK_RETURN}), 0);
    } else if (!is_offer && percent(5)) {
        PostMessageW(dialog, WM_CLOSE, 0, 0);
    } else {
        int button = is_offer ? IDCANCEL : 0;
        for (int tries = 20; !is_offer && !GetDlgItem(dialog, button) && tries > 0; --tries) {
            button = pick({IDOK, IDOK, IDYES, IDNO, IDCANCEL, CTL_REPLACE_CANCEL});
        }
        press_button(dialog, button);
    }
}

void answer_dialog(HWND dialog) {
    HWND file = GetDlgItem(dialog, GetDlgItem(dialog, cmb13) != nullptr ? cmb13 : edt1);
    if (file != nullptr) {
        SetWindowTextW(file, random_file().c_str());
    }
    for (HWND control : controls_of(dialog)) {
        if (file == nullptr && percent(40) && IsWindowVisible(control)) {
            use_control(dialog, control);
        }
    }
    leave(dialog);
}

// A menu that is open gets a key; while a report is written a step is taken, with what then still
// works.
void answer_what_is_open() {
    HWND dialog = open_dialog();
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetCurrentThreadId(), &info);
    const bool in_menu = (info.flags & (GUI_INMENUMODE | GUI_INMOVESIZE)) != 0;
    if (in_menu && (dialog == nullptr || percent(30))) {
        ++monkey.answers;
        PostMessageW(main_window(), WM_KEYDOWN,
                     pick<WPARAM>({VK_DOWN, VK_RIGHT, VK_RETURN, VK_ESCAPE, VK_ESCAPE}), 0);
    } else if (is_busy() && (dialog == nullptr || (dialog == cancel_box() && percent(60)))) {
        if (std::exchange(monkey.inside, false)) {
            take_step();
            run();
            monkey.inside = true;
        }
    } else if (std::exchange(monkey.dialog, dialog) != dialog || ++monkey.looks > k_looks_to_go) {
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
    const std::minstd_rand steps = monkey.random;
    monkey.random.discard(1000 + monkey.answers);
    answer_what_is_open();
    monkey.random = steps;
}

// ---- What must hold after each step -------------------------------------------------------------

// A clone loses the copy of its cell's view state, on purpose.
LRESULT CALLBACK count_clones(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    monkey.clones += message == WM_COMMAND && LOWORD(wparam) == CMD_CELL_CLONE;
    return CallWindowProcW(monkey.window_proc, window, message, wparam, lparam);
}

std::string engine_fault() {
    for (; monkey.clones > 0 && !check_engine(monkey.lost).empty(); --monkey.clones) {
        ++monkey.lost;
    }
    monkey.clones = 0;
    return check_engine(monkey.lost);
}

uint32_t from_environment(const char *name, const char *otherwise) {
    const char *text = getenv(name);
    return static_cast<uint32_t>(strtoul(text != nullptr ? text : otherwise, nullptr, 10));
}

// `settled`: the box and the cell list have just been told the current cell.
void check_window(bool settled) {
    constexpr size_t k_shown_by_all = 40;  // a name from a file may be longer than the box shows
    const std::string name = to_8bit(to_utf16(current_name().c_str()));
    const std::string start = name.substr(0, k_shown_by_all);
    EXPECT_FALSE(is_busy() || cancel_box() != nullptr || recovery_available() ||
                 short_on_memory_offer_open() || !IsWindowEnabled(main_window()));
    EXPECT_EQ(text_pane_cell(), current_cell());
    EXPECT_TRUE(sci(text_pane(), SCI_GETMODIFY) || words() == stored_text(current_name())) << name;
    EXPECT_TRUE(!settled || (box_text().starts_with(start) && selected_item().starts_with(start)))
        << name;
    EXPECT_EQ(item_count(), static_cast<int>(live_cells().size()));
}

struct MonkeyTest : ShellTest {
    void begin() {
        answers_end();
        monkey.lost = monkey.clones = 0;
        write_file("good.qvx", web_of("cell_1 Plan1", cell_of("cell_1", "home Plan2")));
        write_file("broken.qvx", web_of("cell_1").substr(0, 40));
        write_file("full.qvx", web_of("Plan3", cell_of("Plan3", lines_of(draw(400000)))));
        monkey.timer = SetTimer(nullptr, 0, 10, look);
        start(web_of("home cell_1 Plan2 free", cell_of("cell_1", "Plan2") + cell_of("Plan2")));
        monkey.window_proc = subclass_window(main_window(), count_clones);
    }

    void check() {
        const bool settled = percent(3);
        run();
        if (settled && IsWindow(main_window())) {
            command(CMD_CELL_NEXT);
        }
        const bool ended = ended_with() != k_still_running;  // which cuts an operation off
        if (ended || !IsWindow(main_window())) {
            KillTimer(nullptr, monkey.timer);
            TearDown();
            EXPECT_TRUE(ended || blocks_in_use() <= monkey.lost + monkey.clones);
            SetUp();
            begin();
        }
        EXPECT_EQ(engine_fault(), "");
        check_window(settled);
    }
};

// Some steps follow the one before at once, while its messages still wait.
TEST_F(MonkeyTest, LeavesEverythingWhole) {
    const uint32_t steps = from_environment("QUORVANE_MONKEY_STEPS", "1500");
    monkey.random.seed(from_environment("QUORVANE_MONKEY_SEED", "1"));
    begin();
    for (uint32_t step = 0; step < steps && !HasFailure(); ++step) {
        monkey.inside = true;
        take_step();
        if (percent(75)) {
            check();
        }
        monkey.inside = false;
    }
    KillTimer(nullptr, monkey.timer);
}

}  // namespace
