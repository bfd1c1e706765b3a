// The dialogs, opened by their commands and driven by their controls.
#include "shell/dialogs.h"

#include "core/host.h"
#include "core/names.h"
#include "resources/resource.h"
#include "shell/main_window.h"
#include "shell/scintilla.h"
#include "shell/text_conversion.h"
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

std::string item_text(HWND dialog, int control) {
    return text_of(GetDlgItem(dialog, control));
}

// ---- The cellname dialog ------------------------------------------------------------------------

struct NameCase {
    const wchar_t *typed;
    WPARAM key;
    const char *name;  // "" for none
};

TEST_F(DialogTest, CellnameIsAskedTrimmedAndChecked) {
    start();
    const std::string long_name(k_cellname_max, 'x');
    const std::wstring longer(60, 'x');
    const NameCase cases[] = {
        {L"plan", VK_RETURN, "plan"},
        {L"12 plan_2", VK_RETURN, "plan_2"},
        {L"", VK_RETURN, ""},
        {L"plan", VK_ESCAPE, ""},
        {longer.c_str(), VK_RETURN, long_name.c_str()},
    };
    for (const NameCase &one : cases) {
        answer_with("Enter New Cellname:", [&](HWND dialog) {
            HWND edit = GetDlgItem(dialog, CTL_NEW_CELLNAME);
            EXPECT_TRUE(has_focus(edit));
            SetWindowTextW(edit, one.typed);
            post_key(edit, one.key);
        });
        char name[k_cellname_max + 1] = "left over";
        EXPECT_EQ(ask_cellname(name), one.name[0] != 0);
        EXPECT_STREQ(name, one.name);
    }
}

TEST_F(DialogTest, BadCellnameIsWarnedAbout) {
    start();
    answer_with("Enter New Cellname", [](HWND dialog) {
        SetDlgItemTextW(dialog, CTL_NEW_CELLNAME, L"12 34");
        press_button(dialog, IDOK);
    });
    answer("Bad cell name supplied", IDOK);
    char name[k_cellname_max + 1];
    EXPECT_FALSE(ask_cellname(name));
    EXPECT_STREQ(name, "");
}

// ---- Zoom and About -----------------------------------------------------------------------------

constexpr int32_t k_zooms[] = {-4, -2, 0, 4, 6, 8, 10, 16, 20};

TEST_F(DialogTest, ZoomShowsTheNearestFactorAndSetsTheChosenOne) {
    start();
    const int entry_of_zoom[] = {0, 0, 0, 0, 0, 0, 0, 1, 1, 2, 2, 2, 3, 3, 3, 4,
                                 4, 5, 5, 6, 6, 7, 7, 7, 7, 7, 7, 8, 8, 8, 8};
    for (int32_t zoom = k_zoom_min; zoom <= k_zoom_max; ++zoom) {
        set_option_zoom(zoom);
        const LRESULT expected = entry_of_zoom[zoom - k_zoom_min];
        const LRESULT chosen = (expected + 4) % 9;
        answer_with("Choose Zoom Factor", [&](HWND dialog) {
            HWND list = GetDlgItem(dialog, CTL_ZOOM_FACTOR);
            EXPECT_EQ(SendMessageW(list, CB_GETCOUNT, 0, 0), 9);
            EXPECT_EQ(SendMessageW(list, CB_GETCURSEL, 0, 0), expected) << zoom;
            SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
            press_button(dialog, IDOK);
        });
        command(CMD_ZOOM);
        EXPECT_EQ(option_zoom(), k_zooms[chosen]);
        EXPECT_EQ(sci(text_pane(), SCI_GETZOOM), k_zooms[chosen]);
        EXPECT_EQ(sci(console_pane(), SCI_GETZOOM), k_zooms[chosen]);
    }
}

TEST_F(DialogTest, ZoomIsLeftByEscapeAndGoesTo100WithoutASelection) {
    start();
    set_option_zoom(3);
    answer_with("Choose Zoom Factor", [](HWND dialog) {
        SendDlgItemMessageW(dialog, CTL_ZOOM_FACTOR, CB_SETCURSEL, 8, 0);
        post_key(GetDlgItem(dialog, CTL_ZOOM_FACTOR), VK_ESCAPE);
    });
    EXPECT_FALSE(open_zoom_dialog());
    EXPECT_EQ(option_zoom(), 3);
    answer_with("Choose Zoom Factor", [](HWND dialog) {
        SendDlgItemMessageW(dialog, CTL_ZOOM_FACTOR, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
        post_key(GetDlgItem(dialog, CTL_ZOOM_FACTOR), VK_RETURN);
    });
    EXPECT_TRUE(open_zoom_dialog());
    EXPECT_EQ(option_zoom(), 0);
}

TEST_F(DialogTest, AboutBoxClosesByEnterAndEscape) {
    start();
    for (const WPARAM key : {WPARAM{VK_RETURN}, WPARAM{VK_ESCAPE}}) {
        answer_with("QUORVANE   v1.2", [&](HWND dialog) { post_key(dialog, key); });
        command(CMD_HELP_ABOUT);
    }
    answer("The Quorvane authors", IDOK);
    command(CMD_HELP_ABOUT);
}

// ---- The Replace dialog and the search bar ------------------------------------------------------

void fill_and_press(HWND dialog, const wchar_t *search, const wchar_t *replacement, int button) {
    SetDlgItemTextW(dialog, CTL_SEARCH_TEXT, search);
    SetDlgItemTextW(dialog, CTL_REPLACE_TEXT, replacement);
    SendDlgItemMessageW(dialog, CTL_SEARCH_CASE, BM_CLICK, 0, 0);
    press_button(dialog, button);
}

TEST_F(DialogTest, ReplaceDialogKeepsWhatIsSearchedFor) {
    start();
    show_tab(1);
    set_option_starg("old");
    set_option_srpl("new");
    set_option_search_case(1);
    answer_with("Replace with:", [](HWND dialog) {
        EXPECT_TRUE(search_in_progress());
        EXPECT_TRUE(has_focus(GetDlgItem(dialog, CTL_SEARCH_TEXT)));
        EXPECT_EQ(item_text(dialog, CTL_SEARCH_TEXT), "old");
        EXPECT_EQ(item_text(dialog, CTL_REPLACE_TEXT), "new");
        EXPECT_EQ(SendDlgItemMessageW(dialog, CTL_SEARCH_CASE, BM_GETCHECK, 0, 0), BST_CHECKED);
        fill_and_press(dialog, L"d\u00E9j\u00E0", std::wstring(60, 'r').c_str(), IDOK);
    });
    command(CMD_FIND);
    EXPECT_STREQ(option_starg(), "d\xC3\xA9j\xC3\xA0");
    EXPECT_EQ(option_srpl(), std::string(k_search_max, 'r'));
    EXPECT_EQ(option_search_case(), 0);
    ASSERT_TRUE(search_bar());
    EXPECT_EQ(SendDlgItemMessageW(search_bar(), CTL_NEXT_CASE, BM_GETCHECK, 0, 0), BST_UNCHECKED);
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

TEST_F(BarTest, StandsInTheBandAndMovesWithTheWindow) {
    open_bar();
    EXPECT_EQ(GetParent(search_bar()), main_window());
    const RECT bar = place_of(search_bar());
    EXPECT_EQ(bar.left, 0);
    EXPECT_EQ(bar.top, 25);
    EXPECT_EQ(pane_top(), 43);
    for (const int button : {CTL_NEXT_FIND, CTL_NEXT_REPLACE, CTL_NEXT_CASE, IDCANCEL}) {
        const RECT rect = place_of(GetDlgItem(search_bar(), button));
        EXPECT_LE(rect.bottom, 43);
        EXPECT_LE(rect.right, 240);
    }
}

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

TEST_F(BarTest, ASecondSearchIsRefusedAndTheCloseCommandClosesIt) {
    open_bar();
    command(CMD_FIND);
    EXPECT_EQ(status_text(), "Search or Replace already in progress");
    command(CMD_CLOSE_MODELESS);
    EXPECT_FALSE(search_bar());
    command(CMD_CLOSE_MODELESS);
}

TEST_F(BarTest, GoesWithTheMainWindow) {
    open_bar();
    DestroyWindow(main_window());
    EXPECT_FALSE(search_bar());
    EXPECT_FALSE(search_in_progress());
}

}  // namespace
