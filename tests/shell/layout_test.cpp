// The layout table, and where it puts the controls.
#include "shell/layout.h"

#include "resources/resource.h"
#include "shell/main_window.h"
#include "shell/status_line.h"
#include "tests/shell/shell_test.h"

namespace {

LONG width(const RECT &rect) {
    return rect.right - rect.left;
}

LONG height(const RECT &rect) {
    return rect.bottom - rect.top;
}

// As the handheld's screen: what the menu bar leaves of it.
void expect_no_gaps(LONG client_width) {
    const RECT bar = place_of(navigation_buttons());
    const RECT box = place_of(pane_window(k_pane_box));
    const RECT list = place_of(pane_window(k_pane_list));
    const RECT tabs = place_of(pane_window(k_pane_tabs));
    const RECT status = place_of(status_line());
    const RECT menus = place_of(menu_bar());
    EXPECT_EQ(width(box), client_width - 60);
    EXPECT_EQ(height(bar), 25);
    EXPECT_EQ(list.top, 25);
    EXPECT_EQ(list.left, 2);
    EXPECT_EQ(list.bottom, tabs.top - 1);
    EXPECT_EQ(height(tabs), 20);
    EXPECT_EQ(tabs.bottom, status.top);
    EXPECT_EQ(height(status), 25);
    EXPECT_EQ(status.bottom, menus.top + 1);
}

RECT button_place(int index) {
    RECT rect = {};
    SendMessageW(navigation_buttons(), TB_GETITEMRECT, static_cast<WPARAM>(index),
                 as_lparam(&rect));
    return rect;
}

}  // namespace

struct Layout : ShellTest {};

TEST_F(Layout, FitsTheHandheldsScreen) {
    SetEnvironmentVariableW(L"QUORVANE_SCREEN", L"240x320");
    start();
    expect_no_gaps(240);
    EXPECT_GE(button_place(0).left, 186);
    EXPECT_LE(button_place(1).right, 240);
}

TEST_F(Layout, FollowsTheWindowsSize) {
    SetEnvironmentVariableW(L"QUORVANE_SCREEN", L"");
    start();
    expect_no_gaps(360);
    EXPECT_GE(button_place(0).left, 306);
    EXPECT_LE(button_place(1).right, 360);
    RECT frame;
    GetWindowRect(main_window(), &frame);
    SetWindowPos(main_window(), nullptr, 0, 0, width(frame) + 100, height(frame) - 90,
                 SWP_NOMOVE | SWP_NOZORDER);
    run();
    expect_no_gaps(460);
    EXPECT_GE(button_place(0).left, 406);
}
