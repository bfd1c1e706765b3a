#include "tests/shell/shell_test.h"

#include "core/host_messages.h"
#include "core/recovery.h"
#include "core/text.h"
#include "desktop/frame.h"
#include "platform/windows/text_conversion.h"
#include "report/output.h"
#include "shell/cellname_box.h"
#include "shell/message_loop.h"
#include "shell/status_line.h"
#include "web/trail.h"

#include <cstdio>

namespace {

constexpr int k_still_running = -99;
constexpr DWORD k_patience = 5000;  // milliseconds

int exit_status = k_still_running;

void post_press(HWND pane, LRESULT position) {
    const LRESULT x = sci(pane, SCI_POINTXFROMPOSITION, 0, position);
    const LRESULT y = sci(pane, SCI_POINTYFROMPOSITION, 0, position);
    // Within the character, away from the edge between two.
    const LPARAM point = MAKELPARAM(x + 2, y + 4);
    PostMessageW(pane, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(pane, WM_LBUTTONUP, 0, point);
}

}  // namespace

// The program would be gone: the operation in hand ends here.
void end_program(int status) {
    exit_status = status;
    recovery_jump();
}

void ShellTest::SetUp() {
    exit_status = k_still_running;
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
}

void ShellTest::start() {
    launch(L"");
}

void ShellTest::start(const std::string &web) {
    path = "test.qvx";
    write_file(path, web);
    launch(to_utf16(path.c_str()));
}

void ShellTest::start_in_text(const std::string &web) {
    start(web);
    show_tab(1);
}

void launch(const wchar_t *command_line) {
    ASSERT_EQ(start_program(GetModuleHandleW(nullptr), command_line, SW_SHOWNORMAL), 0);
    ASSERT_TRUE(run_until([] { return item_count() > 0; }));
    run();
}

bool run_until(const std::function<bool()> &done) {
    const DWORD start = GetTickCount();
    int code = 0;
    while (!done()) {
        if (GetTickCount() - start > k_patience || !message_loop_round(&code)) {
            return done();
        }
        if (!done()) {
            desktop_idle();
        }
    }
    return true;
}

void run() {
    int code = 0;
    message_loop_round(&code);
}

void run_for(DWORD milliseconds) {
    const DWORD start = GetTickCount();
    run_until([=] { return GetTickCount() - start > milliseconds; });
}

testing::AssertionResult status_becomes(const std::string &text) {
    if (run_until([&] { return status_text() == text; })) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "the status line says " << status_text();
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

void click(HWND pane, LRESULT position) {
    post_press(pane, position);
    run();
}

void double_click(HWND pane, LRESULT position) {
    post_press(pane, position);
    post_press(pane, position);
    run();
}

void show_tab(int tab) {
    HWND tabs = pane_window(k_pane_tabs);
    SendMessageW(tabs, TCM_SETCURSEL, static_cast<WPARAM>(tab), 0);
    NMHDR header = {tabs, static_cast<UINT_PTR>(GetDlgCtrlID(tabs)), TCN_SELCHANGE};
    SendMessageW(main_window(), WM_NOTIFY, header.idFrom, as_lparam(&header));
    run();
}

void select(HWND pane, LRESULT start, LRESULT end) {
    sci(pane, SCI_SETSEL, start, end);
}

void push(HWND dialog, int button) {
    SendDlgItemMessageW(dialog, button, BM_CLICK, 0, 0);
    run();
}

void answer_name(const wchar_t *name, int button) {
    answer_with("Enter New Cellname", [name, button](HWND dialog) {
        SetDlgItemTextW(dialog, CTL_NEW_CELLNAME, name);
        press_button(dialog, button);
    });
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

testing::AssertionResult caret_is_in_view() {
    UpdateWindow(text_pane());
    const LRESULT caret = sci(text_pane(), SCI_GETCURRENTPOS);
    const LRESULT y = sci(text_pane(), SCI_POINTYFROMPOSITION, 0, caret);
    RECT room;
    GetClientRect(text_pane(), &room);
    if (y >= 0 && y + sci(text_pane(), SCI_TEXTHEIGHT, 0) <= room.bottom) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "at " << y << " of " << room.bottom;
}

RECT place_of(HWND window) {
    RECT rect;
    GetWindowRect(window, &rect);
    MapWindowPoints(nullptr, main_window(), reinterpret_cast<POINT *>(&rect), 2);
    return rect;
}

bool has_focus(HWND window) {
    return GetFocus() == window;
}

std::string place() {
    return current_name() + " " + std::to_string(sci(text_pane(), SCI_GETSELECTIONSTART)) + "-" +
           std::to_string(sci(text_pane(), SCI_GETSELECTIONEND));
}

std::string cell_of(const std::string &name, const std::string &text) {
    return "\n<cell>\n<cname>" + name + "</cname>\n<text>" + text + "</text></cell>";
}

std::string web_of(const std::string &home_text, const std::string &more_cells) {
    return cell_of("home", home_text) + more_cells + "</eof>";
}

std::string current_name() {
    return cell_name_string(current_cell());
}

std::string stored_text(const char *name) {
    std::string text(text_size(cell_text(cell_lookup(name))), '\0');
    text_copy_out(text.data(), cell_text(cell_lookup(name)), static_cast<uint32_t>(text.size()));
    return text;
}

std::string file_bytes(const std::string &file_path) {
    std::string bytes;
    if (FILE *file = fopen(file_path.c_str(), "rb")) {
        for (int c = getc(file); c != EOF; c = getc(file)) {
            bytes.push_back(static_cast<char>(c));
        }
        fclose(file);
    }
    return bytes;
}

void write_file(const std::string &file_path, const std::string &bytes) {
    FILE *file = fopen(file_path.c_str(), "wb");
    ASSERT_TRUE(file);
    fwrite(bytes.data(), 1, bytes.size(), file);
    fclose(file);
}

std::string times(size_t count, const std::string &text) {
    std::string all;
    while (count-- > 0) {
        all += text;
    }
    return all;
}

int ended_with() {
    return exit_status;
}
