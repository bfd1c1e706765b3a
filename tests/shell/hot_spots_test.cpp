// Cellnames as links: how they are drawn, clicking and double-clicking them.
#include "shell/panes/input.h"
#include "shell/panes/styles.h"
#include "tests/shell/shell_test.h"

struct HotSpots : ShellTest {};

TEST_F(HotSpots, WordsThatNameCellsAreLinks) {
    start_in_text(web_of("PLAN plans my_plan x-plan plan\xC3\xA9 \xE2\x80\x9Cplan",
                         cell_of("plan") + cell_of("my plan")));
    const std::pair<int, int> rows[] = {{0, 2},  {5, 0},  {11, 2}, {19, 0},
                                        {21, 2}, {26, 0}, {36, 2}};
    for (const auto &[at, style] : rows) {
        EXPECT_EQ(style_at(text_pane(), at), style) << "at " << at;
    }
    EXPECT_EQ(sci(text_pane(), SCI_STYLEGETFORE, 2), RGB(197, 18, 27));
    EXPECT_TRUE(sci(text_pane(), SCI_STYLEGETBOLD, 2));
    EXPECT_TRUE(sci(text_pane(), SCI_STYLEGETHOTSPOT, 2));
    EXPECT_EQ(sci(text_pane(), SCI_STYLEGETSIZE, 0), 9);
}

TEST_F(HotSpots, NewCellsBecomeLinksInBothPanes) {
    start_in_text(web_of("word"));
    sci_text(console_pane(), SCI_SETTEXT, 0, "word");
    for (HWND pane : {text_pane(), console_pane()}) {
        EXPECT_EQ(style_at(pane, 0), 0);
    }
    cell_create(index_root_address(), "word");  // no text is shown anew
    restyle_panes();                            // the next tick
    for (HWND pane : {text_pane(), console_pane()}) {
        EXPECT_EQ(style_at(pane, 0), 2);
    }
}

TEST_F(HotSpots, EditingMakesAndUnmakesLinks) {
    start_in_text(web_of("hom plan", cell_of("plan")));
    EXPECT_EQ(style_at(text_pane(), 0), 0);
    for (const auto &[at, typed] : {std::pair{3, "e"}, std::pair{7, " "}}) {
        sci(text_pane(), SCI_GOTOPOS, at);
        type(text_pane(), typed);
        EXPECT_EQ(style_at(text_pane(), 0), 2);
        EXPECT_EQ(style_at(text_pane(), 5), at == 3 ? 2 : 0);
    }
}

TEST_F(HotSpots, ClickGoesAsByNameAndNotToTheCellItself) {
    start_in_text(web_of("see home or plan", cell_of("plan", "back home") + cell_of("later")));
    go_to_name("later");
    command(CMD_BACK);
    EXPECT_EQ(after_click(text_pane(), 1, place), "home 1-1") << "which names no cell";
    select(text_pane(), 0, 3);
    hot_spot_click(5);
    EXPECT_FALSE(sci(text_pane(), SCI_GETSELECTIONHIDDEN));
    EXPECT_EQ(place(), "home 0-3");
    EXPECT_EQ(after_click(text_pane(), 13, shown), "plan|back home");
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_FALSE(web_changed());
    forward();
    EXPECT_EQ(current_name(), "plan") << "what was stepped back from is forgotten";
    EXPECT_EQ(after(CMD_BACK, current_name), "home");
}

TEST_F(HotSpots, ClickInTheConsoleGoesThereAndLeavesTheSelectionAlone) {
    start(web_of("", cell_of("plan", "the plan")));
    show_tab(2);
    sci_text(console_pane(), SCI_SETTEXT, 0, "see plan");
    EXPECT_EQ(after_click(console_pane(), 5, current_name), "plan");
    EXPECT_EQ(current_view(), k_view_console);
    EXPECT_FALSE(sci(console_pane(), SCI_GETSELECTIONHIDDEN));
}

TEST_F(HotSpots, NamesOf48CharactersCanBeClicked) {
    const std::string name48(48, 'n');
    start_in_text(web_of(name48 + " " + name48 + "n", cell_of(name48)));
    EXPECT_STREQ(word_at_position(10), name48.c_str());
    EXPECT_EQ(word_at_position(60), nullptr);
    EXPECT_EQ(style_at(text_pane(), 60), 0);
    EXPECT_EQ(after_click(text_pane(), 10, current_name), name48);
}

TEST_F(HotSpots, ClickHidesTheSelectionUntilTheNextTick) {
    start_in_text(web_of("plan one", cell_of("plan")));
    select(text_pane(), 5, 8);
    hide_selection_once();
    show_tab(2);  // the pane is not the active one any more
    EXPECT_TRUE(run_until([] { return !sci(text_pane(), SCI_GETSELECTIONHIDDEN); }));
    EXPECT_TRUE(sci(text_pane(), SCI_GETSELECTIONEMPTY)) << "it comes back collapsed";
    show_tab(1);
    hot_spot_click(1);
    EXPECT_TRUE(sci(text_pane(), SCI_GETSELECTIONHIDDEN));
}

TEST_F(HotSpots, DoubleClickCreatesACell) {
    start_in_text(web_of("some word"));
    answer("No such cell. Create it?", IDYES);
    double_click(text_pane(), 6);
    EXPECT_EQ(current_name() + "|" + selected_item(), "word|word");
    EXPECT_FALSE(web_changed());
    set_option_dclick_ask(0);
    command(CMD_BACK);
    select(text_pane(), 0, 4);
    SendMessageW(text_pane(), WM_LBUTTONDBLCLK, MK_LBUTTON, 0);
    EXPECT_TRUE(sci(text_pane(), SCI_GETSELECTIONHIDDEN)) << "until the next tick";
    run();
    EXPECT_EQ(current_name(), "some");
}

TEST_F(HotSpots, SecondPressOfADoubleClickOnALinkIsSwallowed) {
    start_in_text(web_of("plan", cell_of("plan", "strange words")));
    click(text_pane(), 1);
    click(text_pane(), 1);
    run();
    EXPECT_EQ(current_name(), "plan");
    EXPECT_EQ(item_count(), 2);
}

// A pane that scrolled between the two presses would select what has come under the pointer.
TEST_F(HotSpots, DoubleClickTakesTheWordOnTheLastLineInSight) {
    std::string lines;
    for (int i = 100; i < 200; ++i) {
        lines += "line word" + std::to_string(i) + "\r\n";
    }
    start(web_of(""));
    set_option_dclick_create(0);
    for (const int tab : {1, 2}) {
        show_tab(tab);
        HWND pane = active_pane_window();
        sci_text(pane, SCI_SETTEXT, 0, lines.c_str());
        for (const int below : {-1, 0}) {  // the last whole line, and the one that is cut off
            UpdateWindow(pane);
            sci(pane, SCI_SETFIRSTVISIBLELINE, 10);
            UpdateWindow(pane);
            const LRESULT line = 10 + sci(pane, SCI_LINESONSCREEN) + below;
            double_click(pane, sci(pane, SCI_POSITIONFROMLINE, line) + 7);
            EXPECT_EQ(sci(pane, SCI_GETFIRSTVISIBLELINE), 10) << "tab " << tab << " line " << line;
            EXPECT_STREQ(selected_text(), ("word" + std::to_string(100 + line)).c_str());
            selected_text_free();
        }
    }
}
