// The dialogs, opened by their commands and driven by their controls.
#include "shell/find/search_bar.h"

#include "core/names.h"
#include "tests/shell/shell_test.h"

namespace {

struct DialogTest : ShellTest {};

long pane_top() {
    return place_of(text_pane()).top;
}

// Presses a key in a dialog's own message loop, or in the program's for the search bar.
void post_key(HWND control, WPARAM key) {
    PostMessageW(control, WM_KEYDOWN, key, 0);
}

void answer_zoom(LRESULT shown, int entry, WPARAM key) {
    answer_with("Choose Zoom Factor", [=](HWND dialog) {
        HWND list = GetDlgItem(dialog, CTL_ZOOM_FACTOR);
        EXPECT_EQ(SendMessageW(list, CB_GETCOUNT, 0, 0), 9);
        EXPECT_EQ(SendMessageW(list, CB_GETCURSEL, 0, 0), shown);
        SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
        post_key(list, key);
    });
    command(CMD_ZOOM);
}

// ---- The cellname dialog, Zoom and About --------------------------------------------------------

TEST_F(DialogTest, CellnameIsAskedTrimmedAndChecked) {
    start();
    const struct {
        std::wstring typed;
        WPARAM key;
        std::string name;  // "" for none
    } cases[] = {
        {L"plan", VK_RETURN, "plan"},
        {L"12 plan_2", VK_RETURN, "plan_2"},
        {L"", VK_RETURN, ""},
        {L"plan", VK_ESCAPE, ""},
        {L"12 34", VK_RETURN, ""},
        {std::wstring(60, 'x'), VK_RETURN, std::string(k_cellname_max, 'x')},
    };
    for (const auto &one : cases) {
        answer_with("Enter New Cellname:", [&](HWND dialog) {
            HWND edit = GetDlgItem(dialog, CTL_NEW_CELLNAME);
            EXPECT_TRUE(has_focus(edit));
            SetWindowTextW(edit, one.typed.c_str());
            post_key(edit, one.key);
        });
        if (one.typed == L"12 34") {
            answer("Bad cell name supplied", IDOK);
        }
        char name[k_cellname_max + 1] = "left over";
        EXPECT_EQ(ask_cellname(name), !one.name.empty());
        EXPECT_EQ(name, one.name);
    }
}

TEST_F(DialogTest, ZoomShowsTheNearestFactorAndSetsTheChosenOne) {
    start();
    constexpr int32_t k_zooms[] = {-4, -2, 0, 4, 6, 8, 10, 16, 20};
    const std::string entry_of_zoom = "0000000112223334455667777778888";  // from -10 on
    for (int32_t zoom = k_zoom_min; zoom <= k_zoom_max; ++zoom) {
        SCOPED_TRACE(zoom);
        const int shown = entry_of_zoom[static_cast<size_t>(zoom - k_zoom_min)] - '0';
        const int chosen = (shown + 4) % 9;
        set_option_zoom(zoom);
        answer_zoom(shown, chosen, VK_RETURN);
        EXPECT_EQ(option_zoom(), k_zooms[chosen]);
        for (HWND pane : {text_pane(), console_pane()}) {
            EXPECT_EQ(sci(pane, SCI_GETZOOM), k_zooms[chosen]);
        }
    }
    set_option_zoom(3);
    answer_zoom(3, 8, VK_ESCAPE);
    EXPECT_EQ(option_zoom(), 3);
    answer_zoom(3, -1, VK_RETURN);
    EXPECT_EQ(option_zoom(), 0) << "nothing selected";
}

TEST_F(DialogTest, AboutBoxClosesByEnterAndEscape) {
    start();
    for (const WPARAM key : {WPARAM{VK_RETURN}, WPARAM{VK_ESCAPE}}) {
        answer_with("The Quorvane authors", [&](HWND dialog) { post_key(dialog, key); });
        command(CMD_HELP_ABOUT);
    }
}

// ---- The Replace dialog and the search bar ------------------------------------------------------

// Presses a button with these texts in the fields and the case box turned over.
void fill_and_press(HWND dialog, const std::wstring &search, const std::wstring &replacement,
                    int button) {
    SetDlgItemTextW(dialog, CTL_SEARCH_TEXT, search.c_str());
    SetDlgItemTextW(dialog, CTL_REPLACE_TEXT, replacement.c_str());
    push(dialog, CTL_SEARCH_CASE);
    press_button(dialog, button);
}

TEST_F(DialogTest, ReplaceDialogKeepsWhatIsSearchedFor) {
    start_in_text(web_of(""));
    set_option_starg("old");
    set_option_srpl("new");
    set_option_search_case(1);
    answer_with("Replace with:", [](HWND dialog) {
        EXPECT_TRUE(search_in_progress());
        EXPECT_TRUE(has_focus(GetDlgItem(dialog, CTL_SEARCH_TEXT)));
        EXPECT_EQ(text_of(GetDlgItem(dialog, CTL_SEARCH_TEXT)), "old");
        EXPECT_EQ(text_of(GetDlgItem(dialog, CTL_REPLACE_TEXT)), "new");
        EXPECT_TRUE(IsDlgButtonChecked(dialog, CTL_SEARCH_CASE));
        fill_and_press(dialog, L"d\u00E9j\u00E0", std::wstring(48, 'r'), IDOK);
    });
    command(CMD_FIND);
    EXPECT_STREQ(option_starg(), "d\xC3\xA9j\xC3\xA0");
    EXPECT_EQ(option_srpl(), std::string(k_srpl_max, 'r'));
    EXPECT_EQ(option_search_case(), 0);
    EXPECT_FALSE(IsDlgButtonChecked(search_bar(), CTL_NEXT_CASE));
}

// 25 letters that take two bytes each are two bytes too many.
TEST_F(DialogTest, ReplaceRefusesTextsThatDoNotFitAndCutsNone) {
    start_in_text(web_of(""));
    set_option_starg("old");
    const std::wstring fits(24, L'\u00E9');
    const struct {
        std::wstring search, replacement;
        const char *refusal;
    } rows[] = {
        {fits + L"\u00E9", L"", "The text to search for has at most 48 characters. "},
        {fits, fits + L"e", "The replacement has at most 48 characters. "},
    };
    for (const auto &row : rows) {
        answer_with("Replace", [&](HWND dialog) {
            fill_and_press(dialog, row.search, row.replacement, IDOK);
            answer_with(row.refusal, [dialog](HWND box) {
                press_button(box, IDOK);
                press_button(dialog, CTL_REPLACE_CANCEL);
            });
        });
        command(CMD_FIND);
        EXPECT_STREQ(option_starg(), "old");
        EXPECT_STREQ(option_srpl(), "");
        EXPECT_FALSE(search_bar());
    }
}

TEST_F(DialogTest, EveryWayOutOfTheReplaceDialogTakesTheBandAway) {
    start_in_text(web_of(""));
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
        start_in_text(web_of("one two one two"));
        answer_with("Replace", [](HWND dialog) { fill_and_press(dialog, L"two", L"", IDOK); });
        command(CMD_FIND);
        ASSERT_TRUE(search_bar());
        ASSERT_EQ(place(), "home 4-7");
    }
};

TEST_F(BarTest, EnterFindsOnAndEscapeCloses) {
    open_bar();
    EXPECT_EQ(GetFocus(), GetDlgItem(search_bar(), CTL_NEXT_FIND));
    EXPECT_EQ(after(GetFocus(), VK_RETURN, place), "home 12-15");
    press(GetFocus(), VK_ESCAPE);
    EXPECT_FALSE(search_bar());
    EXPECT_FALSE(search_in_progress());
    EXPECT_EQ(pane_top(), 25);
    EXPECT_TRUE(has_focus(text_pane()));
    EXPECT_EQ(place(), "home 12-15");
}

TEST_F(BarTest, TypingGoesOnInThePaneAndTabComesBack) {
    open_bar();
    SetFocus(text_pane());
    press(text_pane(), VK_TAB);
    EXPECT_TRUE(IsChild(search_bar(), GetFocus()));
    EXPECT_EQ(words(), "one two one two");
    press(GetFocus(), VK_TAB);
    EXPECT_TRUE(IsChild(search_bar(), GetFocus()));
}

TEST_F(BarTest, ButtonsAndPanesKeepTheFocusThatTheyHave) {
    open_bar();
    HWND repl = GetDlgItem(search_bar(), CTL_NEXT_REPLACE);
    SetFocus(repl);
    EXPECT_EQ(after(repl, VK_SPACE, place), "home 9-12") << "replaced by nothing";
    EXPECT_TRUE(has_focus(repl));
    for (HWND focus : {text_pane(), GetDlgItem(search_bar(), CTL_NEXT_CASE), text_pane(), repl}) {
        SetFocus(focus);
        if (focus != text_pane()) {
            press(focus, VK_SPACE);
        }
        minimise_and_restore();
        EXPECT_EQ(IsChild(search_bar(), GetFocus()), focus != text_pane());
    }
}

TEST_F(BarTest, StandsInItsBandUntilTheCloseCommandOrTheWindowsEnd) {
    open_bar();
    EXPECT_EQ(GetParent(search_bar()), main_window());
    const RECT bar = place_of(search_bar());
    EXPECT_TRUE(bar.left == 0 && bar.top == 25);
    EXPECT_EQ(pane_top(), 43);
    for (const int button : {CTL_NEXT_FIND, CTL_NEXT_REPLACE, CTL_NEXT_CASE, IDCANCEL}) {
        const RECT rect = place_of(GetDlgItem(search_bar(), button));
        EXPECT_TRUE(rect.bottom <= 43 && rect.right <= 240) << button;
    }
    EXPECT_EQ(after(CMD_FIND, status_text), "Search or Replace already in progress");
    command(CMD_CLOSE_MODELESS);
    EXPECT_FALSE(search_bar());
    answer_with("Replace", [](HWND dialog) { press_button(dialog, IDOK); });
    command(CMD_FIND);
    ASSERT_TRUE(search_bar());
    DestroyWindow(main_window());
    EXPECT_FALSE(search_bar());
    EXPECT_FALSE(search_in_progress());
}

}  // namespace
