// The program under test: its real main window, with everything but the entry point, driven by
// messages as the system sends them.
#pragma once

// Included for what nearly every test drives and reads.
#include "resources/resource.h"
#include "shell/main_window.h"
#include "shell/panes/scintilla.h"
#include "shell/panes/text_pane.h"
#include "shell/views.h"
#include "tests/shell/answers.h"
#include "web/cells.h"

#include <functional>
#include <string>

#include <gtest/gtest.h>

struct ShellTest : testing::Test {
    std::string path;  // of the web that the program was started with

    void SetUp() override;
    void TearDown() override;

    // Starts the program on a new web, on a file of these bytes, and the latter with its text
    // shown.
    void start();
    void start(const std::string &web);
    void start_in_text(const std::string &web);
};

// Starts the program with a command line, up to the point where it shows a web.
void launch(const wchar_t *command_line);

// Handles messages as the program does until `done`, five seconds at most; says which.
bool run_until(const std::function<bool()> &done);

// Handles what is waiting, or what comes within a time.
void run();
void run_for(DWORD milliseconds);

// Waits until the status line says exactly this.
testing::AssertionResult status_becomes(const std::string &text);

// ---- What the user does -------------------------------------------------------------------------

void command(WORD id);
void press(HWND window, WPARAM key);
void type(HWND window, const std::string &text);

// Presses the left button at a position of a text pane, and lets it go.
void click(HWND pane, LRESULT position);
void double_click(HWND pane, LRESULT position);

void show_tab(int tab);

// Selects a range of a pane.
void select(HWND pane, LRESULT start, LRESULT end);

// Presses a button of an open dialog and waits for what it does.
void push(HWND dialog, int button);

// Answers the dialog that asks for a new cell's name.
void answer_name(const wchar_t *name, int button = IDOK);

// ---- What the user sees -------------------------------------------------------------------------

std::string text_of(HWND window);  // of any control
std::string pane_text(HWND pane);
std::string box_text();
std::string status_text();
std::string selected_item();  // of the cell list
int item_count();

// Style of the byte at a position, styled first.
int style_at(HWND pane, LRESULT position);

testing::AssertionResult caret_is_in_view();  // of the text pane

RECT place_of(HWND window);  // in the main window
bool has_focus(HWND window);

// The current cell and the text pane's selection, as "name 3-5".
std::string place();

// ---- The web and its file -----------------------------------------------------------------------

// A web file's bytes with these cells, after home.
std::string web_of(const std::string &home_text, const std::string &more_cells = "");
std::string cell_of(const std::string &name, const std::string &text);

std::string current_name();
std::string stored_text(const char *name);

std::string file_bytes(const std::string &path);
void write_file(const std::string &path, const std::string &bytes);

// A text, so many times.
std::string times(size_t count, const std::string &text);

// Exit status that the program wanted to end with since the start; -99: it did not.
int ended_with();
