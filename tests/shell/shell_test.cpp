#include "tests/shell/shell_test.h"

#include "core/recovery.h"
#include "desktop/frame.h"
#include "shell/message_loop.h"
#include "shell/status_line.h"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr DWORD k_patience = 10000;  // milliseconds

int exit_status = k_still_running;

void post_click(HWND window, LONG x, LONG y) {
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

// Within the character, away from the edge between two.
void post_press(HWND pane, LRESULT position) {
    post_click(pane, static_cast<LONG>(sci(pane, SCI_POINTXFROMPOSITION, 0, position)) + 2,
               static_cast<LONG>(sci(pane, SCI_POINTYFROMPOSITION, 0, position)) + 4);
}

}  // namespace

// The program would be gone: the operation in hand ends here.
void end_program(int status) {
    exit_status = status;
    recovery_jump();
}

// So does one with a fault, and the test fails.
void check_failed(const char *what) {
    ADD_FAILURE() << what;
    if (!recovery_available()) {
        abort();
    }
    recovery_jump();
}

void ShellTest::SetUp() {
    SetErrorMode(SEM_NOGPFAULTERRORBOX);  // a crash ends the run
    exit_status = k_still_running;
    std::filesystem::create_directory("files");
    std::filesystem::current_path("files");
    answers_begin();
}

void ShellTest::TearDown() {
    EXPECT_TRUE(all_asked()) << "a dialog that was expected did not open";
    EXPECT_EQ(unexpected_dialogs(), "");
    answers_end();
    set_web_changed(false);
    if (IsWindow(main_window())) {
        DestroyWindow(main_window());
    }
    PostQuitMessage(0);
    int code = 0;
    while (message_loop_round(&code)) {
    }
    web_clear();  // the next start empties the arena
    UnregisterClassW(L"Quorvane", GetModuleHandleW(nullptr));
    std::filesystem::current_path("..");
    std::error_code ignored;
    std::filesystem::remove_all("files", ignored);
}

void ShellTest::start(const std::string &web) {
    if (!web.empty()) {
        write_file(path, web);
    }
    launch(web.empty() ? "" : path);
}

void ShellTest::start_in_text(const std::string &web) {
    start(web);
    show_tab(1);
}

void launch(const std::string &command_line, const wchar_t *screen) {
    SetEnvironmentVariableW(L"QUORVANE_SCREEN", screen);
    ASSERT_EQ(
        start_program(GetModuleHandleW(nullptr), to_utf16(command_line.c_str()), SW_SHOWNORMAL), 0);
    ASSERT_TRUE(run_until([] { return item_count() > 0; }));
    run();
}

bool run_until(const std::function<bool()> &done) {
    const DWORD start = GetTickCount();
    int code = 0;
    while (!done() && GetTickCount() - start <= k_patience && message_loop_round(&code)) {
        desktop_idle();
    }
    return done();
}

void run() {
    int code = 0;
    message_loop_round(&code);
}

void run_for(DWORD milliseconds) {
    const DWORD start = GetTickCount();
    run_until([=] { return GetTickCount() - start > milliseconds; });
}

void command(WORD id) {
    SendMessageW(main_window(), WM_COMMAND, id, 0);
    run();
}

void press(HWND window, WPARAM key) {
    PostMessageW(window, WM_KEYDOWN, key, 0);
    PostMessageW(window, WM_KEYUP, key, 0);
    run();
}

void type(HWND window, const std::string &text) {
    for (const char c : text) {
        PostMessageW(window, WM_CHAR, static_cast<WPARAM>(c), 0);
    }
    run();
}

void hold(std::initializer_list<int> held) {
    BYTE keys[256] = {};
    for (const int key : held) {
        keys[key] = 0x80;
    }
    SetKeyboardState(keys);
}

void click_at(HWND window, LONG x, LONG y) {
    post_click(window, x, y);
    run();
}

void click(HWND pane, LRESULT position) {
    post_press(pane, position);
    run();
}

void double_click(HWND pane, LRESULT position) {
    post_press(pane, position);
    click(pane, position);
}

void show_tab(int tab) {
    HWND tabs = pane_window(k_pane_tabs);
    SendMessageW(tabs, TCM_SETCURSEL, static_cast<WPARAM>(tab), 0);
    NMHDR header = {tabs, static_cast<UINT_PTR>(GetDlgCtrlID(tabs)), TCN_SELCHANGE};
    SendMessageW(main_window(), WM_NOTIFY, header.idFrom, as_lparam(&header));
    run();
}

void minimise_and_restore() {
    PostMessageW(main_window(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
    run();
    EXPECT_TRUE(IsIconic(main_window()));
    PostMessageW(main_window(), WM_SYSCOMMAND, SC_RESTORE, 0);
    run();
    EXPECT_FALSE(IsIconic(main_window()));
}

void select(HWND pane, LRESULT start, LRESULT end) {
    sci(pane, SCI_SETSEL, start, end);
}

void push(HWND dialog, int button) {
    SendDlgItemMessageW(dialog, button, BM_CLICK, 0, 0);
    run();
}

void delete_by_command(int button) {
    answer("Delete current cell?", button);
    command(CMD_CELL_DELETE);
}

std::string text_of(HWND window) {
    static wchar_t text[4096];
    GetWindowTextW(window, text, 4096);
    return to_8bit(text);
}

std::string pane_text(HWND pane) {
    const LRESULT length = sci(pane, SCI_GETTEXTLENGTH);
    std::string text(static_cast<size_t>(length) + 1, '\0');
    sci_text(pane, SCI_GETTEXT, length + 1, text.data());
    text.resize(static_cast<size_t>(length));
    return text;
}

std::string words() {
    return pane_text(text_pane());
}

std::string box_text() {
    return text_of(cellname_edit());
}

std::string status_text() {
    return text_of(status_line());
}

std::string selected_item() {
    HWND list = pane_window(k_pane_list);
    static wchar_t text[256];
    text[0] = 0;
    TVITEMW item = {};
    item.mask = TVIF_TEXT;
    item.hItem = reinterpret_cast<HTREEITEM>(SendMessageW(list, TVM_GETNEXTITEM, TVGN_CARET, 0));
    item.pszText = text;
    item.cchTextMax = 256;
    SendMessageW(list, TVM_GETITEMW, 0, as_lparam(&item));
    return to_8bit(text);
}

int item_count() {
    return static_cast<int>(SendMessageW(pane_window(k_pane_list), TVM_GETCOUNT, 0, 0));
}

int style_at(HWND pane, LRESULT position) {
    UpdateWindow(pane);
    const LRESULT styled = sci(pane, SCI_GETENDSTYLED);
    if (styled <= position) {
        sci(pane, SCI_COLOURISE, styled, position + 1);
    }
    return static_cast<int>(sci(pane, SCI_GETSTYLEAT, position));
}

bool caret_is_in_view() {
    UpdateWindow(text_pane());
    const LRESULT caret = sci(text_pane(), SCI_GETCURRENTPOS);
    const LRESULT y = sci(text_pane(), SCI_POINTYFROMPOSITION, 0, caret);
    RECT room;
    GetClientRect(text_pane(), &room);
    return y >= 0 && y + sci(text_pane(), SCI_TEXTHEIGHT, 0) <= room.bottom;
}

bool has_focus(HWND window) {
    return GetFocus() == window;
}

std::string place() {
    return current_name() + " " + std::to_string(sci(text_pane(), SCI_GETSELECTIONSTART)) + "-" +
           std::to_string(sci(text_pane(), SCI_GETSELECTIONEND));
}

std::string shown() {
    return current_name() + "|" + words();
}

int ended_with() {
    return exit_status;
}
