// Typing, the clipboard and undo in the panes.
#include "resources/resource.h"
#include "shell/main_window.h"
#include "shell/scintilla.h"
#include "shell/text_pane.h"
#include "tests/shell/answers.h"
#include "tests/shell/shell_test.h"
#include "web/cells.h"

struct Editing : ShellTest {
    void start_in_text(const std::string &web) {
        start(web);
        show_tab(1);
    }
};

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

TEST_F(Editing, CutDeleteAndSelectAll) {
    start_in_text(web_of("one two"));
    select(text_pane(), 0, 4);
    command(CMD_CUT);
    EXPECT_EQ(pane_text(text_pane()), "two");
    command(CMD_DELETE);
    EXPECT_EQ(pane_text(text_pane()), "wo");
    command(CMD_SELECT_ALL);
    command(CMD_PASTE);
    EXPECT_EQ(pane_text(text_pane()), "one ");
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
    show_tab(2);
    EXPECT_EQ(stored_text("home"), "\xC3\xA4"
                                   "abcaf\xC3\xA9 \xE2\x82\xAC \xFF");
}
