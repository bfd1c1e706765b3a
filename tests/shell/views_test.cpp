// Views, the pane that has the focus, and the Tab key.
#include "shell/panes/console_pane.h"
#include "tests/shell/shell_test.h"

#include <tuple>
#include <utility>

struct Views : ShellTest {};

TEST_F(Views, TabsMoveTheFocusAndTheTabKeyTogglesIt) {
    start();
    const std::tuple<int, ViewIndex, PaneIndex> rows[] = {{1, k_view_text, k_pane_text},
                                                          {2, k_view_console, k_pane_console},
                                                          {0, k_view_list, k_pane_list}};
    ViewIndex before = k_view_list;
    for (const auto &[tab, view, pane] : rows) {
        show_tab(tab);
        EXPECT_EQ(current_view(), view);
        EXPECT_EQ(previous_view(), std::exchange(before, view));
        EXPECT_TRUE(has_focus(pane_window(pane)));
        EXPECT_EQ(after(GetFocus(), VK_TAB, active_pane), k_pane_box);
        EXPECT_TRUE(has_focus(cellname_edit()));
        EXPECT_EQ(after(GetFocus(), VK_TAB, active_pane), pane);
        EXPECT_TRUE(has_focus(pane_window(pane)));
    }
}

// Another window of the machine's, in front of the program's for a moment.
static void leave_and_come_back() {
    HWND other = CreateWindowExW(0, L"EDIT", L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                 nullptr, nullptr, nullptr);
    SetForegroundWindow(other);
    run();
    EXPECT_TRUE(has_focus(other));
    SetForegroundWindow(main_window());
    run();
    DestroyWindow(other);
}

TEST_F(Views, FocusComesBackToThePaneThatHadIt) {
    start();
    show_tab(1);
    leave_and_come_back();
    EXPECT_TRUE(has_focus(text_pane()));
    SetFocus(main_window());  // as some systems do with a window that is restored
    EXPECT_TRUE(has_focus(text_pane()));
    press(GetFocus(), VK_TAB);
    minimise_and_restore();
    EXPECT_TRUE(has_focus(cellname_edit()));
    leave_and_come_back();
    EXPECT_TRUE(has_focus(cellname_edit()));
}

// What is typed would go unseen into the text of the cell.
TEST_F(Views, FocusComesBackToNoPaneThatIsOutOfSight) {
    start_in_text(web_of("Hi"));
    leave_and_come_back();
    show_tab(0);
    minimise_and_restore();
    EXPECT_TRUE(has_focus(pane_window(k_pane_list)));
    EXPECT_EQ(after(GetFocus(), "unseen", words), "Hi");
    set_active_pane(k_pane_text);  // a late report of a pane that has gone
    focus_active_pane();
    EXPECT_TRUE(has_focus(pane_window(k_pane_list)));
}

TEST_F(Views, OutputEndsInTheMiddleOfTheConsoleAndTheCaretMovesItNoFurther) {
    start();
    const std::string lines = times(100, "a line\n");
    const auto top = [] { return sci(console_pane(), SCI_GETFIRSTVISIBLELINE); };
    LRESULT expected = 0;
    for (const int tab : {1, 2}) {  // out of sight, and in it
        show_tab(tab);
        console_clear();
        console_insert(0, lines.data(), static_cast<uint32_t>(lines.size()));
        console_show_pending();
        show_tab(2);
        expected = expected != 0 ? expected : top();
        EXPECT_GT(expected, 101 - sci(console_pane(), SCI_LINESONSCREEN));
        EXPECT_EQ(top(), expected) << "tab " << tab;
        press(console_pane(), VK_UP);
        EXPECT_EQ(top(), expected);
    }
}
