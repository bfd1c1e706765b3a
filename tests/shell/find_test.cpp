// Find and replace through the Replace dialog and the search bar, over the cells of a web.
#include "shell/find.h"

#include "core/block_arena.h"
#include "resources/resource.h"
#include "shell/dialogs.h"
#include "shell/main_window.h"
#include "shell/scintilla.h"
#include "shell/text_pane.h"
#include "tests/shell/answers.h"
#include "tests/shell/shell_test.h"
#include "web/cells.h"
#include "web/options.h"

namespace {

struct FindTest : ShellTest {
    // Opens the search bar by way of the Replace dialog, which finds the first match.
    static void search_for(const std::string &text, const std::string &replacement = "") {
        answer_with("Search for:", [&](HWND dialog) {
            SetDlgItemTextA(dialog, CTL_SEARCH_TEXT, text.c_str());
            SetDlgItemTextA(dialog, CTL_REPLACE_TEXT, replacement.c_str());
            press_button(dialog, IDOK);
        });
        command(CMD_FIND);
    }

    static void press_bar(int button) {
        SendDlgItemMessageW(search_bar(), button, BM_CLICK, 0, 0);
        run();
    }
};

// The current cell and its selection, as "name 3-5".
std::string place() {
    return current_name() + " " + std::to_string(sci(text_pane(), SCI_GETSELECTIONSTART)) + "-" +
           std::to_string(sci(text_pane(), SCI_GETSELECTIONEND));
}

std::string three_cells() {
    return web_of("a bean and a Bean", cell_of("beta", "there is no such thing") +
                                           cell_of("cabbage", "") +
                                           cell_of("zeta", "the last bean"));
}

TEST_F(FindTest, GoesOnThroughTheCellsAndRoundTheEnd) {
    start(three_cells());
    show_tab(1);
    search_for("bean");
    EXPECT_EQ(place(), "home 2-6");
    for (const char *next : {"home 13-17", "zeta 9-13", "home 2-6", "home 13-17"}) {
        press_bar(CTL_NEXT_FIND);
        EXPECT_EQ(place(), next);
    }
    EXPECT_EQ(selected_item(), "home");
    EXPECT_TRUE(IsChild(search_bar(), GetFocus()));
    EXPECT_FALSE(web_changed());
}

// A text that the pane breaks into far more lines than it has line ends.
std::string long_text(const std::string &last_word) {
    std::string text;
    for (int i = 0; i < 20; ++i) {
        for (int word = 0; word < 60; ++word) {
            text += "word ";
        }
        text += "\n";
    }
    return text + last_word + "\nend";
}

testing::AssertionResult selection_is_in_view() {
    UpdateWindow(text_pane());
    const LRESULT caret = sci(text_pane(), SCI_GETCURRENTPOS);
    const LRESULT y = sci(text_pane(), SCI_POINTYFROMPOSITION, 0, caret);
    RECT room;
    GetClientRect(text_pane(), &room);
    if (y >= 0 && y + sci(text_pane(), SCI_TEXTHEIGHT, 0) <= room.bottom) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "at " << y << " of " << room.bottom;
}

TEST_F(FindTest, TheMatchIsInView) {
    start(web_of("start", cell_of("zeta", long_text("bean"))));
    show_tab(1);
    search_for("bean");
    ASSERT_EQ(current_name(), "zeta");
    EXPECT_TRUE(selection_is_in_view());
    press_bar(IDCANCEL);
    command(CMD_CELL_PREVIOUS);
    command(CMD_CELL_NEXT);
    EXPECT_TRUE(selection_is_in_view()) << "coming back";
}

TEST_F(FindTest, FindsWhatWasJustTyped) {
    start(three_cells());
    show_tab(1);
    type(text_pane(), "radish ");
    search_for("radish");
    EXPECT_EQ(place(), "home 0-6");
    press_bar(IDCANCEL);
    search_for("last");
    EXPECT_EQ(place(), "zeta 4-8");
    EXPECT_EQ(stored_text("home"), "radish a bean and a Bean");
}

TEST_F(FindTest, ReplacesEachMatchOnceThoughItComesAgain) {
    start(three_cells());
    show_tab(1);
    search_for("bean", "beans and beans");
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
    start(three_cells());
    show_tab(1);
    search_for("bean", "turnip");
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

}  // namespace
