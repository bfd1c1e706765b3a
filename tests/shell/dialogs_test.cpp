// The dialogs, opened by their commands and driven by their controls.
#include "shell/dialogs.h"

#include "core/host.h"
#include "resources/resource.h"
#include "shell/main_window.h"
#include "shell/scintilla.h"
#include "shell/text_pane.h"
#include "tests/shell/answers.h"
#include "tests/shell/shell_test.h"
#include "web/options.h"

namespace {

struct DialogTest : ShellTest {};

long pane_top() {
    return place_of(text_pane()).top;
}

// Presses a key in a dialog's own message loop, or in the program's for the search bar.
void post_key(HWND control, WPARAM key) {
    PostMessageW(control, WM_KEYDOWN, key, 0);
}

TEST_F(DialogTest, ZoomShowsTheNearestFactorAndSetsTheChosenOne) {
    start();
    set_option_zoom(13);
    answer_with("Choose Zoom Factor", [](HWND dialog) {
        HWND list = GetDlgItem(dialog, CTL_ZOOM_FACTOR);
        EXPECT_EQ(SendMessageW(list, CB_GETCURSEL, 0, 0), 7);
        SendMessageW(list, CB_SETCURSEL, 1, 0);
        press_button(dialog, IDOK);
    });
    command(CMD_ZOOM);
    EXPECT_EQ(option_zoom(), -2);
    EXPECT_EQ(sci(text_pane(), SCI_GETZOOM), -2);
}

// ---- The Replace dialog and the search bar ------------------------------------------------------

void fill_and_press(HWND dialog, const wchar_t *search, const wchar_t *replacement, int button) {
    SetDlgItemTextW(dialog, CTL_SEARCH_TEXT, search);
    SetDlgItemTextW(dialog, CTL_REPLACE_TEXT, replacement);
    SendDlgItemMessageW(dialog, CTL_SEARCH_CASE, BM_CLICK, 0, 0);
    press_button(dialog, button);
}

TEST_F(DialogTest, EveryWayOutOfTheReplaceDialogTakesTheBandAway) {
    start();
    show_tab(1);
    set_option_starg("old");
    const std::function<void(HWND)> ways[] = {
        [](HWND dialog) { fill_and_press(dialog, L"x", L"y", CTL_REPLACE_CANCEL); },
        [](HWND dialog) { post_key(GetDlgItem(dialog, CTL_SEARCH_TEXT), VK_ESCAPE); },
        [](HWND dialog) { PostMessageW(dialog, WM_CLOSE, 0, 0); },
        [](HWND dialog) { fill_and_press(dialog, L"", L"y", IDOK); },
    };
    for (const auto &way : ways) {
        answer_with("Replace", [&](HWND dialog) {
            run();
            EXPECT_EQ(pane_top(), 43) << "the band while the dialog is open";
            way(dialog);
        });
        command(CMD_FIND);
        EXPECT_FALSE(search_in_progress());
        EXPECT_FALSE(search_bar());
        EXPECT_EQ(pane_top(), 25);
        EXPECT_STREQ(option_starg(), "old");
        EXPECT_STREQ(option_srpl(), "");
    }
    EXPECT_EQ(status_text(), "Nothing to search for");
}

struct BarTest : ShellTest {
    void open_bar() {
        start(web_of("one two one two"));
        show_tab(1);
        answer_with("Replace", [](HWND dialog) { fill_and_press(dialog, L"two", L"", IDOK); });
        command(CMD_FIND);
        ASSERT_TRUE(search_bar());
    }
};

TEST_F(BarTest, EnterFindsOnAndEscapeCloses) {
    open_bar();
    EXPECT_EQ(GetFocus(), GetDlgItem(search_bar(), CTL_NEXT_FIND));
    EXPECT_EQ(sci(text_pane(), SCI_GETSELECTIONSTART), 4);
    press(GetFocus(), VK_RETURN);
    EXPECT_EQ(sci(text_pane(), SCI_GETSELECTIONSTART), 12);
    press(GetFocus(), VK_ESCAPE);
    EXPECT_FALSE(search_bar());
    EXPECT_FALSE(search_in_progress());
    EXPECT_EQ(pane_top(), 25);
    EXPECT_TRUE(has_focus(text_pane()));
    EXPECT_EQ(sci(text_pane(), SCI_GETSELECTIONSTART), 12);
}

TEST_F(BarTest, TypingGoesOnInThePaneAndTabComesBack) {
    open_bar();
    SetFocus(text_pane());
    press(text_pane(), VK_TAB);
    EXPECT_TRUE(IsChild(search_bar(), GetFocus()));
    EXPECT_EQ(pane_text(text_pane()), "one two one two");
    press(GetFocus(), VK_TAB);
    EXPECT_TRUE(IsChild(search_bar(), GetFocus()));
}

}  // namespace
