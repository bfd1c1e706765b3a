// Views, the pane that has the focus, and the Tab key.
#include "resources/resource.h"
#include "shell/cellname_box.h"
#include "shell/main_window.h"
#include "shell/text_pane.h"
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

TEST_F(Views, LeavingTheTextStoresIt) {
    start(web_of("Hi"));
    show_tab(1);
    type(text_pane(), "Oh ");
    EXPECT_EQ(stored_text("home"), "Hi");
    show_tab(2);
    EXPECT_EQ(stored_text("home"), "Oh Hi");
}
