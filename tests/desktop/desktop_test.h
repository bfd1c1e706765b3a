// A small program for desktop/ to work on: a main window with a Scintilla pane,
// which keeps the messages that reach it.
#pragma once

#include <windows.h>

#include <aygshell.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

struct SeenMessage {
    UINT message;
    WPARAM wparam;
};

struct DesktopTest : testing::Test {
    HWND window = nullptr;
    HWND pane = nullptr;
    SHMENUBARINFO bar = {};
    SHACTIVATEINFO activation = {};
    std::vector<SeenMessage> seen;
    std::deque<WPARAM> menu_keys;      // typed into menus, each when the menu is idle
    std::vector<std::wstring> opened;  // what open_dropped_file() was given

    void SetUp() override;
    void TearDown() override;

    // Makes and shows the window; `screen` goes to QUORVANE_SCREEN.
    void open_window(const wchar_t *screen = L"");

    // Counts messages, of a command when one is given.
    long count_seen(UINT message, WORD command = 0) const;
};

// Handles messages until `done` or until five seconds are over; says which.
bool pump_until(const std::function<bool()> &done);

// Handles the messages that are waiting.
void pump();
