// Find and replace through the Replace dialog and the search bar, over the cells of a web.
#include "shell/find/find.h"

#include "shell/dialogs/dialogs.h"
#include "shell/find/search_walk.h"
#include "shell/panes/styles.h"
#include "tests/shell/shell_test.h"

namespace {

struct FindTest : ShellTest {
    // Opens the search bar by way of the Replace dialog, which finds the first match. Like a press
    // of the bar's buttons it returns the place that was found.
    static std::string search_for(const std::wstring &text, const std::wstring &replacement = L"") {
        answer_with("Search for:", [&](HWND dialog) {
            SetDlgItemTextW(dialog, CTL_SEARCH_TEXT, text.c_str());
            SetDlgItemTextW(dialog, CTL_REPLACE_TEXT, replacement.c_str());
            press_button(dialog, IDOK);
        });
        return after(CMD_FIND, place);
    }

    static std::string press_bar(int button) {
        push(search_bar(), button);
        return place();
    }
};

std::string three_cells() {
    return web_of("a bean and a Bean", cell_of("beta", "there is no such thing") +
                                           cell_of("cabbage") + cell_of("zeta", "the last bean"));
}

TEST_F(FindTest, GoesOnThroughTheCellsAndRoundTheEnd) {
    start_in_text(three_cells());
    EXPECT_EQ(search_for(L"bean"), "home 2-6");
    for (const char *next : {"home 13-17", "zeta 9-13", "home 2-6", "home 13-17"}) {
        EXPECT_EQ(press_bar(CTL_NEXT_FIND), next);
    }
    EXPECT_EQ(selected_item(), "home");
    EXPECT_TRUE(IsChild(search_bar(), GetFocus()));
    EXPECT_FALSE(web_changed());
}

TEST_F(FindTest, TheMatchIsInView) {
    // A text that the pane breaks into far more lines than it has line ends.
    const std::string text = times(20, times(60, "word ") + "\n") + "bean\nend";
    start_in_text(web_of("start", cell_of("zeta", text)));
    search_for(L"bean");
    ASSERT_EQ(current_name(), "zeta");
    EXPECT_TRUE(caret_is_in_view());
    press_bar(IDCANCEL);
    command(CMD_CELL_PREVIOUS);
    command(CMD_CELL_NEXT);
    EXPECT_TRUE(caret_is_in_view()) << "coming back";
}

TEST_F(FindTest, FindsWhatWasJustTyped) {
    start_in_text(three_cells());
    type(text_pane(), "radish ");
    EXPECT_EQ(search_for(L"radish"), "home 0-6");
    EXPECT_EQ(stored_text("home"), "radish a bean and a Bean");
}

TEST_F(FindTest, ReplacesEachMatchOnceThoughItComesAgain) {
    start_in_text(three_cells());
    search_for(L"bean", L"beans and beans");
    press_bar(CTL_NEXT_REPLACE);
    EXPECT_EQ(words(), "a beans and beans and a Bean");
    EXPECT_EQ(place(), "home 24-28") << "one find next, behind the replacement";
    EXPECT_EQ(after(CMD_UNDO, words), "a bean and a Bean") << "in one step";
    sci(text_pane(), SCI_REDO);
    select(text_pane(), 24, 28);
    EXPECT_EQ(press_bar(CTL_NEXT_REPLACE), "zeta 9-13");
    EXPECT_EQ(stored_text("home"), "a beans and beans and a beans and beans");
    EXPECT_TRUE(web_changed());
}

TEST_F(FindTest, ReplacesOnlyWhileTheMatchIsSelected) {
    start_in_text(three_cells());
    search_for(L"bean", L"turnip");
    select(text_pane(), 0, 3);
    EXPECT_EQ(press_bar(CTL_NEXT_REPLACE), "home 13-17") << "found on, nothing replaced";
    // The same range in another cell, where it would match too, and the same range of other text.
    command(CMD_CELL_PREVIOUS);
    command(CMD_CELL_PREVIOUS);
    ASSERT_EQ(current_name(), "beta");
    sci_text(text_pane(), SCI_SETTEXT, 0, "there is not bean");
    select(text_pane(), 13, 17);
    press_bar(CTL_NEXT_REPLACE);
    EXPECT_EQ(stored_text("beta"), "there is not bean");
    EXPECT_EQ(place(), "home 2-6");
    sci_text(text_pane(), SCI_SETTEXT, 0, "a weed");
    select(text_pane(), 2, 6);
    press_bar(CTL_NEXT_REPLACE);
    EXPECT_EQ(stored_text("home"), "a weed");
    EXPECT_EQ(place(), "zeta 9-13");
}

TEST_F(FindTest, WithoutAMatchTheSearchEndsWhereItBegan) {
    start_in_text(three_cells());
    const uint32_t free_before = blocks_free();
    select(text_pane(), 4, 6);
    EXPECT_EQ(search_for(L"radish"), "home 0-0");
    press_bar(CTL_NEXT_REPLACE);
    EXPECT_EQ(words(), "a bean and a Bean");
    EXPECT_EQ(blocks_free(), free_before) << "cells that were only looked at";
    for (const int tab : {0, 2}) {  // only the text pane is searched
        press_bar(IDCANCEL);
        show_tab(tab);
        search_for(L"bean");
        EXPECT_EQ(press_bar(CTL_NEXT_FIND), "home 0-0");
    }
}

TEST_F(FindTest, CountsInBytesAndFoldsLettersBeyondAscii) {
    start_in_text(web_of("\xC3\xA9t\xC3\xA9 bean", cell_of("other", "\xC3\x89T\xC3\x89 2")));
    EXPECT_EQ(search_for(L"\u00E9t\u00E9"), "home 0-5");
    EXPECT_EQ(press_bar(CTL_NEXT_FIND), "other 0-5");
}

TEST_F(FindTest, AMatchStaysSelectedWhereAClickHadHiddenTheSelection) {
    start_in_text(web_of("zeta", cell_of("zeta", "some zeta")));
    click(text_pane(), 2);
    ASSERT_EQ(current_name(), "zeta");
    search_for(L"zeta");
    restyle_panes();  // the next tick
    EXPECT_EQ(place(), "zeta 5-9");
    EXPECT_FALSE(sci(text_pane(), SCI_GETSELECTIONHIDDEN));
}

TEST_F(FindTest, RefusedWhileOutputRunsAndWithoutATextInALaterWeb) {
    start_in_text(three_cells());
    search_for(L"bean");
    ASSERT_EQ(output_open(), 0);
    for (const int button : {CTL_NEXT_REPLACE, CTL_NEXT_FIND}) {
        show_status_message("-");
        press_bar(button);
        EXPECT_EQ(status_text(), "OUTPUT IN USE");
        EXPECT_EQ(place() + words(), "home 2-6a bean and a Bean");
    }
    output_close();
    command(CMD_FILE_NEW);
    show_tab(1);
    press_bar(CTL_NEXT_FIND);
    EXPECT_EQ(status_text(), "Nothing to search for");
    show_status_message("-");
    press_bar(CTL_NEXT_REPLACE);
    EXPECT_EQ(status_text(), "-") << "nothing is found";
}

TEST_F(FindTest, TextThatDoesNotFitIsKeptInThePane) {
    start_in_text(three_cells());
    search_for(L"last");
    const std::string typed(100000, 'x');
    sci_text(text_pane(), SCI_SETTEXT, 0, typed.c_str());
    leave_free_blocks(150);
    press_bar(CTL_NEXT_FIND);
    EXPECT_EQ(shown(), "zeta|" + typed);
}

TEST(SearchWalk, RulesOutOnlyWhatThePaneCannotFind) {
    const struct {
        std::string text;
        const char *target;
        bool any_case, same_case;  // whether it may hold the target
    } cases[] = {
        {"some Beans", "bean", true, false},
        {"some Beans", "Bean", true, true},
        {"some Beans", "beams", false, false},
        {"", "a", false, false},
        {"aab", "ab", true, true},
        {"ab", "abc", false, false},
        {"\xE2\x84\xAA", "k", true, false},
        {"k", "\xE2\x84\xAA", true, false},
        {"\xC3\xA9", "\xC3\xA9", true, true},
        {"@[`{", "`", true, true},
        {"[", "{", false, false},
    };
    for (const auto &one : cases) {
        for (const bool match_case : {false, true}) {
            EXPECT_EQ(may_hold(one.text.data(), static_cast<uint32_t>(one.text.size()), one.target,
                               match_case),
                      match_case ? one.same_case : one.any_case)
                << one.target << " in " << one.text;
        }
    }
}

}  // namespace
