// The layout table, and where it puts the controls.
#include "shell/layout.h"

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

struct Layout : ShellTest {};

TEST(LayoutTable, FollowsTheClientArea) {
    LayoutTable table = {};
    layout_fill(&table, 240, 268, false);
    const int32_t expected[] = {240, 268, 2,  2,   180, 22, 120, 0,  0,  240, 25,  186, 18, 224,
                                0,   240, 20, 219, 244, 0,  240, 25, 25, 0,   240, 198, 0,  200};
    for (int i = 0; i < k_layout_slots; ++i) {
        EXPECT_EQ(table.slots[i], expected[i]) << "slot " << i;
    }
    layout_fill(&table, 240, 268, true);
    EXPECT_EQ(table.slots[k_layout_pane_top], 43);
    EXPECT_EQ(table.slots[k_layout_pane_height], 180);
    for (const int outside : {-1, 28}) {
        layout_set_slot(outside, 7);
        EXPECT_EQ(layout_slot(outside), 0);
    }
    layout_set_slot(26, 7);
    EXPECT_EQ(layout_slot(26), 7);
}

TEST_F(Layout, FitsTheHandheldsScreen) {
    SetEnvironmentVariableW(L"QUORVANE_SCREEN", L"240x320");
    start();
    SetEnvironmentVariableW(L"QUORVANE_SCREEN", nullptr);
    expect_no_gaps(240);
    EXPECT_GE(button_place(0).left, 186);
    EXPECT_LE(button_place(1).right, 240);
}

TEST_F(Layout, FollowsTheWindowsSize) {
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

TEST_F(Layout, CollapsesWhatIsNotShown) {
    start();
    const RECT pane = place_of(pane_window(k_pane_list));
    const std::pair<int, PaneIndex> views[] = {
        {0, k_pane_list}, {1, k_pane_text}, {2, k_pane_console}};
    for (const auto &[tab, shown] : views) {
        show_tab(tab);
        for (const auto &[other_tab, one] : views) {
            const RECT place = place_of(pane_window(one));
            EXPECT_EQ(width(place), one != shown ? 0 : one == k_pane_list ? 358 : 360);
            EXPECT_EQ(height(place), one != shown ? 0 : height(pane));
            EXPECT_TRUE(one != shown || place.top == pane.top);
        }
    }
}

TEST_F(Layout, TabsReadInFull) {
    start();
    HWND tabs = pane_window(k_pane_tabs);
    HDC context = GetDC(tabs);
    SelectObject(context, reinterpret_cast<HFONT>(SendMessageW(tabs, WM_GETFONT, 0, 0)));
    WPARAM tab = 0;
    for (const wchar_t *expected : {L"list", L"text", L"console"}) {
        wchar_t text[16] = L"";
        TCITEMW item = {};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        item.cchTextMax = 16;
        SendMessageW(tabs, TCM_GETITEMW, tab, as_lparam(&item));
        EXPECT_STREQ(text, expected);
        RECT rect = {};
        SIZE size = {};
        SendMessageW(tabs, TCM_GETITEMRECT, tab++, as_lparam(&rect));
        GetTextExtentPoint32W(context, text, lstrlenW(text), &size);
        EXPECT_GE(width(rect), 30);
        EXPECT_GE(width(rect), size.cx) << "the tab cuts its text";
    }
    ReleaseDC(tabs, context);
    EXPECT_EQ(SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0), 3);
}

}  // namespace
