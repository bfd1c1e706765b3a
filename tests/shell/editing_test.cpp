// Typing, the clipboard and undo in the panes.
#include "tests/shell/shell_test.h"

struct Editing : ShellTest {};

TEST_F(Editing, UndoTakesTypingBackInOneStep) {
    start_in_text(web_of("Hi"));
    type(text_pane(), "abc");
    EXPECT_EQ(pane_text(text_pane()), "abcHi");
    EXPECT_TRUE(web_changed());
    command(CMD_UNDO);
    EXPECT_EQ(pane_text(text_pane()), "Hi");
    sci(text_pane(), SCI_REDO);
    EXPECT_EQ(pane_text(text_pane()), "abcHi");
}

TEST_F(Editing, TypingAndPastingOverASelectionKeepTheClipboard) {
    start_in_text(web_of("one two three"));
    select(text_pane(), 0, 3);
    command(CMD_COPY);
    select(text_pane(), 4, 7);
    type(text_pane(), "X");
    EXPECT_EQ(pane_text(text_pane()), "one X three");
    select(text_pane(), 6, 11);
    command(CMD_PASTE);
    EXPECT_EQ(pane_text(text_pane()), "one X one");
    command(CMD_PASTE);
    EXPECT_EQ(pane_text(text_pane()), "one X oneone");
    command(CMD_UNDO);
    command(CMD_UNDO);
    EXPECT_EQ(pane_text(text_pane()), "one X three");
    command(CMD_UNDO);
    EXPECT_EQ(pane_text(text_pane()), "one two three");
}

TEST_F(Editing, UndoNeverBringsAnotherCellsTextIn) {
    start_in_text(web_of("at home", cell_of("plan", "a plan")));
    type(text_pane(), "x");
    command(CMD_CELL_NEXT);
    EXPECT_EQ(pane_text(text_pane()), "a plan");
    command(CMD_UNDO);
    EXPECT_EQ(pane_text(text_pane()), "a plan");
    EXPECT_EQ(stored_text("home"), "xat home");
}

TEST_F(Editing, UndoSurvivesSave) {
    start_in_text(web_of("Hi"));
    type(text_pane(), "Oh ");
    command(CMD_FILE_SAVE);
    EXPECT_FALSE(web_changed());
    EXPECT_NE(file_bytes(path).find("<text>Oh Hi</text>"), std::string::npos);
    command(CMD_UNDO);
    EXPECT_EQ(pane_text(text_pane()), "Hi");
    EXPECT_TRUE(web_changed());
}

TEST_F(Editing, TextIsBytesAndNulIsDropped) {
    start_in_text(web_of("caf\xC3\xA9 \xE2\x82\xAC \xFF"));
    EXPECT_EQ(pane_text(text_pane()), "caf\xC3\xA9 \xE2\x82\xAC \xFF");
    PostMessageW(text_pane(), WM_CHAR, 0xE4, 0);
    run();
    sci_text(text_pane(), SCI_ADDTEXT, 3, "a\0b");
    EXPECT_EQ(stored_text("home"), "caf\xC3\xA9 \xE2\x82\xAC \xFF") << "until the pane is left";
    show_tab(2);
    EXPECT_EQ(stored_text("home"), "\xC3\xA4"
                                   "abcaf\xC3\xA9 \xE2\x82\xAC \xFF");
}

TEST_F(Editing, ControlCharactersAndScintillasOwnKeysDoNothing) {
    start_in_text(web_of("one\r\ntwo"));
    type(text_pane(), "\x01\x0c\x1b\x1f");
    BYTE keys[256] = {};
    keys[VK_CONTROL] = 0x80;
    SetKeyboardState(keys);
    for (const char key : {'L', 'D', 'U', 'T'}) {
        SendMessageW(text_pane(), WM_KEYDOWN, static_cast<WPARAM>(key), 0);
    }
    keys[VK_CONTROL] = 0;
    SetKeyboardState(keys);
    EXPECT_EQ(pane_text(text_pane()), "one\r\ntwo");
}

TEST_F(Editing, CellsRememberTheirSelection) {
    start_in_text(web_of("one two", cell_of("plan", "")));
    select(text_pane(), 4, 7);
    command(CMD_CELL_NEXT);
    command(CMD_CELL_NEXT);
    EXPECT_EQ(place(), "home 4-7");
    EXPECT_FALSE(web_changed());
}

TEST_F(Editing, CaretIsInViewWhenAHiddenPaneIsShown) {
    start_in_text(web_of("", cell_of("plan", times(300, "a line\r\n"))));
    command(CMD_CELL_NEXT);
    sci(text_pane(), SCI_GOTOPOS, sci(text_pane(), SCI_GETLENGTH));
    command(CMD_CELL_NEXT);
    show_tab(0);
    command(CMD_CELL_NEXT);
    show_tab(1);
    EXPECT_TRUE(caret_is_in_view());
}

TEST_F(Editing, PanesComeBackAsTheyWereLeft) {
    start_in_text(web_of(times(300, times(60, "word ") + "\r\n")));  // lines that wrap
    sci(text_pane(), SCI_ENSUREVISIBLE, 299);
    sci(text_pane(), SCI_SETFIRSTVISIBLELINE, sci(text_pane(), SCI_VISIBLEFROMDOCLINE, 100));
    const auto first_line = [] {
        return sci(text_pane(), SCI_DOCLINEFROMVISIBLE, sci(text_pane(), SCI_GETFIRSTVISIBLELINE));
    };
    for (const DWORD time_away : {0U, 300U}) {  // in which the pane may put its lines together
        show_tab(0);
        run_for(time_away);
        show_tab(1);
        sci(text_pane(), SCI_ENSUREVISIBLE, 299);
        EXPECT_EQ(first_line(), 100) << time_away;
    }
    EXPECT_EQ(sci(text_pane(), SCI_GETWRAPMODE), SC_WRAP_WORD);
}
