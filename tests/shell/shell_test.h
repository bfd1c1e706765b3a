// The program under test: its real main window, with everything but the entry point, driven by
// messages as the system sends them.
#pragma once

// Included for what nearly every test drives and reads.
#include "core/host_messages.h"
#include "core/host_view.h"
#include "platform/windows/text_conversion.h"
#include "report/output.h"
#include "resources/resource.h"
#include "shell/bars.h"
#include "shell/base/handles.h"
#include "shell/cellname_box.h"
#include "shell/panes/scintilla.h"
#include "shell/panes/text_pane.h"
#include "shell/views.h"
#include "tests/shell/answers.h"
#include "tests/support/files.h"
#include "tests/support/web.h"
#include "tests/support/window_fits.h"
#include "web/cell_ops.h"
#include "web/changed.h"
#include "web/options.h"

#include <functional>

#include <gtest/gtest.h>

// Every test works in an empty folder of its own.
struct ShellTest : testing::Test {
    std::string path = "test.qvx";  // of the web that the program was started with

    void SetUp() override;
    void TearDown() override;

    // Starts the program on a new web or a file of these bytes, and the latter with its text shown.
    void start(const std::string &web = "");
    void start_in_text(const std::string &web);
};

// Starts the program with a command line, up to the point where it shows a web;
// on a screen of a size like "240x320".
void launch(const std::string &command_line, const wchar_t *screen = nullptr);

// Handles messages as the program does until `done`, ten seconds at most; says which.
bool run_until(const std::function<bool()> &done);

// Handles what is waiting, or what comes within a time.
void run();
void run_for(DWORD milliseconds);

// ---- What the user does -------------------------------------------------------------------------

void command(WORD id);
void press(HWND window, WPARAM key);
void type(HWND window, const std::string &text);
void hold(std::initializer_list<int> keys);  // Ctrl, Alt; none lets all of them go

// Presses the left button at a point of a window and lets it go; or at a position of a pane.
void click_at(HWND window, LONG x, LONG y);
void click(HWND pane, LRESULT position);
void double_click(HWND pane, LRESULT position);

void show_tab(int tab);
void minimise_and_restore();
void select(HWND pane, LRESULT start, LRESULT end);

// Presses a button of an open dialog and waits for what it does.
void push(HWND dialog, int button);

// What is seen after a command, a key, some typing or a click.
template <typename Look> auto after(WORD id, Look look) {
    command(id);
    return look();
}

template <typename Look> auto after(HWND window, WPARAM key, Look look) {
    press(window, key);
    return look();
}

template <typename Look> auto after(HWND window, const char *text, Look look) {
    type(window, text);
    return look();
}

template <typename Look> auto after_click(HWND pane, LRESULT position, Look look) {
    click(pane, position);
    return look();
}

// The command that deletes the current cell, and its question.
void delete_by_command(int button = IDOK);

// ---- What the user sees -------------------------------------------------------------------------

std::string text_of(HWND window);  // of any control
std::string pane_text(HWND pane);
std::string words();  // of the text pane
std::string box_text();
std::string status_text();
std::string selected_item();  // of the cell list
int item_count();

// Style of the byte at a position, styled first.
int style_at(HWND pane, LRESULT position);

bool caret_is_in_view();  // of the text pane

inline RECT place_of(HWND window) {
    return place_in(main_window(), window);
}
bool has_focus(HWND window);

// The current cell and the text pane's selection, as "name 3-5"; the cell and the pane's text, as
// "name|text".
std::string place();
std::string shown();

// Exit status that the program wanted to end with since the start; k_still_running: it did not.
constexpr int k_still_running = -99;
int ended_with();
