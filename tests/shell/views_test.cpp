// Views, the pane that has the focus, and the Tab key.
#include "shell/cellname_box.h"
#include "tests/shell/shell_test.h"

struct Views : ShellTest {};

TEST_F(Views, TabsMoveTheFocusAndTheTabKeyTogglesIt) {
    start();
    const struct {
        int tab;
        ViewIndex view;
        PaneIndex pane;
    } rows[] = {{1, k_view_text, k_pane_text},
                {2, k_view_console, k_pane_console},
                {0, k_view_list, k_pane_list}};
    ViewIndex before = k_view_list;
    for (const auto &row : rows) {
        show_tab(row.tab);
        EXPECT_EQ(current_view(), row.view);
        EXPECT_EQ(previous_view(), before);
        EXPECT_EQ(active_pane(), row.pane);
        EXPECT_TRUE(has_focus(pane_window(row.pane)));
        press(GetFocus(), VK_TAB);
        EXPECT_EQ(active_pane(), k_pane_box);
        EXPECT_TRUE(has_focus(cellname_edit()));
        press(GetFocus(), VK_TAB);
        EXPECT_TRUE(has_focus(pane_window(row.pane)));
        before = row.view;
    }
}

TEST_F(Views, FocusComesBackToThePaneThatHadIt) {
    start();
    show_tab(1);
    HWND other = CreateWindowExW(0, L"EDIT", L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                 nullptr, nullptr, nullptr);
    for (const int show : {SW_SHOW, SW_MINIMIZE}) {
        ShowWindow(main_window(), show);
        SetForegroundWindow(other);
        run();
        EXPECT_TRUE(has_focus(other));
        SetForegroundWindow(main_window());
        ShowWindow(main_window(), SW_RESTORE);
        run();
        EXPECT_TRUE(has_focus(text_pane()));
        SetFocus(main_window());  // as some systems do with a window that is restored
        EXPECT_TRUE(has_focus(text_pane()));
    }
    DestroyWindow(other);
}
