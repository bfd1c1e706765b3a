// Find and replace through the Replace dialog and the search bar, over the cells of a web.
#include "shell/find/find.h"

#include "core/block_arena.h"
#include "report/output.h"
#include "shell/dialogs/dialogs.h"
#include "shell/find/search_walk.h"
#include "tests/shell/shell_test.h"
#include "web/options.h"

namespace {

struct FindTest : ShellTest {
    // Opens the search bar by way of the Replace dialog, which finds the first match.
    static void search_for(const std::wstring &text, const std::wstring &replacement = L"") {
        answer_with("Search for:", [&](HWND dialog) {
            SetDlgItemTextW(dialog, CTL_SEARCH_TEXT, text.c_str());
            SetDlgItemTextW(dialog, CTL_REPLACE_TEXT, replacement.c_str());
            press_button(dialog, IDOK);
        });
        command(CMD_FIND);
    }

    static void press_bar(int button) { push(search_bar(), button); }
};

std::string three_cells() {
    return web_of("a bean and a Bean", cell_of("beta", "there is no such thing") +
                                           cell_of("cabbage", "") +
                                           cell_of("zeta", "the last bean"));
}

TEST_F(FindTest, GoesOnThroughTheCellsAndRoundTheEnd) {
    start_in_text(three_cells());
    search_for(L"bean");
    EXPECT_EQ(place(), "home 2-6");
    for (const char *next : {"home 13-17", "zeta 9-13", "home 2-6", "home 13-17"}) {
        press_bar(CTL_NEXT_FIND);
        EXPECT_EQ(place(), next);
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
    search_for(L"radish");
    EXPECT_EQ(place(), "home 0-6");
    press_bar(IDCANCEL);
    search_for(L"last");
    EXPECT_EQ(place(), "zeta 4-8");
    EXPECT_EQ(stored_text("home"), "radish a bean and a Bean");
}

TEST_F(FindTest, ReplacesEachMatchOnceThoughItComesAgain) {
    start_in_text(three_cells());
    search_for(L"bean", L"beans and beans");
    press_bar(CTL_NEXT_REPLACE);
    EXPECT_EQ(pane_text(text_pane()), "a beans and beans and a Bean");
    EXPECT_EQ(place(), "home 24-28") << "one find next, behind the replacement";
    command(CMD_UNDO);
    EXPECT_EQ(pane_text(text_pane()), "a bean and a Bean") << "in one step";
    sci(text_pane(), SCI_REDO);
    select(text_pane(), 24, 28);
    press_bar(CTL_NEXT_REPLACE);
    EXPECT_EQ(place(), "zeta 9-13");
    EXPECT_EQ(stored_text("home"), "a beans and beans and a beans and beans");
    EXPECT_TRUE(web_changed());
}

TEST_F(FindTest, ReplacesOnlyWhileTheMatchIsSelected) {
    start_in_text(three_cells());
    search_for(L"bean", L"turnip");
    select(text_pane(), 0, 3);
    press_bar(CTL_NEXT_REPLACE);
    EXPECT_EQ(place(), "home 13-17") << "found on, nothing replaced";
    // The same range in another cell, and the same range of other text.
    command(CMD_CELL_PREVIOUS);
    command(CMD_CELL_PREVIOUS);
    ASSERT_EQ(current_name(), "beta");
    select(text_pane(), 13, 17);
    press_bar(CTL_NEXT_REPLACE);
    EXPECT_EQ(stored_text("beta"), "there is no such thing");
    EXPECT_EQ(place(), "home 2-6");
    sci_text(text_pane(), SCI_SETTEXT, 0, "a weed");
    select(text_pane(), 2, 6);
    press_bar(CTL_NEXT_REPLACE);
    EXPECT_EQ(stored_text("home"), "a weed");
    EXPECT_EQ(place(), "zeta 9-13");
}

TEST_F(FindTest, CaseIsTheBoxsOfTheMoment) {
    start_in_text(three_cells());
    search_for(L"Bean");
    EXPECT_EQ(place(), "home 2-6");
    push(search_bar(), CTL_NEXT_CASE);
    for (int i = 0; i < 2; ++i) {
        press_bar(CTL_NEXT_FIND);
        EXPECT_EQ(place(), "home 13-17") << "the only match, found again from the start";
    }
    EXPECT_EQ(option_search_case(), 1);
}

TEST_F(FindTest, WithoutAMatchTheSearchEndsWhereItBegan) {
    start_in_text(three_cells());
    const uint32_t free_before = blocks_free();
    select(text_pane(), 4, 6);
    search_for(L"radish");
    EXPECT_EQ(place(), "home 0-0");
    press_bar(CTL_NEXT_REPLACE);
    EXPECT_EQ(pane_text(text_pane()), "a bean and a Bean");
    EXPECT_EQ(blocks_free(), free_before) << "cells that were only looked at";
    for (const int tab : {0, 2}) {  // only the text pane is searched
        press_bar(IDCANCEL);
        show_tab(tab);
        search_for(L"bean");
        press_bar(CTL_NEXT_FIND);
        EXPECT_EQ(place(), "home 0-0");
    }
}

TEST_F(FindTest, CountsInBytesAndFoldsLettersBeyondAscii) {
    start_in_text(web_of("\xC3\xA9t\xC3\xA9 bean", cell_of("other", "\xC3\x89T\xC3\x89 2")));
    search_for(L"\u00E9t\u00E9");
    EXPECT_EQ(place(), "home 0-5");
    press_bar(CTL_NEXT_FIND);
    EXPECT_EQ(place(), "other 0-5");
}

TEST_F(FindTest, AMatchStaysSelectedWhereAClickHadHiddenTheSelection) {
    start_in_text(web_of("zeta", cell_of("zeta", "some zeta")));
    click(text_pane(), 2);
    ASSERT_EQ(current_name(), "zeta");
    search_for(L"zeta");
    run_for(1200);  // past the next tick
    EXPECT_EQ(place(), "zeta 5-9");
    EXPECT_FALSE(sci(text_pane(), SCI_GETSELECTIONHIDDEN));
}

TEST_F(FindTest, RefusedWhileOutputRunsAndWithoutATextInALaterWeb) {
    start_in_text(three_cells());
    search_for(L"bean");
    ASSERT_EQ(output_open(), 0);
    press_bar(CTL_NEXT_FIND);
    EXPECT_EQ(status_text(), "OUTPUT IN USE");
    press_bar(CTL_NEXT_REPLACE);
    EXPECT_EQ(place(), "home 2-6");
    EXPECT_EQ(pane_text(text_pane()), "a bean and a Bean");
    output_close();
    command(CMD_FILE_NEW);
    show_tab(1);
    press_bar(CTL_NEXT_FIND);
    EXPECT_EQ(status_text(), "Nothing to search for");
}

TEST_F(FindTest, TextThatDoesNotFitIsKeptInThePane) {
    start_in_text(three_cells());
    search_for(L"last");
    const std::string typed(100000, 'x');
    sci_text(text_pane(), SCI_SETTEXT, 0, typed.c_str());
    while (blocks_free() > 150) {
        block_alloc(k_block_plain);
    }
    press_bar(CTL_NEXT_FIND);
    EXPECT_EQ(current_name(), "zeta");
    EXPECT_EQ(pane_text(text_pane()), typed);
}

TEST(SearchWalk, RulesOutOnlyWhatThePaneCannotFind) {
    const struct {
        const char *text, *target;
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
            EXPECT_EQ(
                may_hold(one.text, static_cast<uint32_t>(strlen(one.text)), one.target, match_case),
                match_case ? one.same_case : one.any_case)
                << one.target << " in " << one.text;
        }
    }
}

}  // namespace
