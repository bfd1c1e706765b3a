// Without SciLexer.dll the program says so and keeps running. These tests need a process that has
// never loaded it: they run where the file is not beside the program.
#include "shell/panes/input.h"
#include "shell/panes/styles.h"
#include "tests/shell/shell_test.h"

struct WithoutScintilla : ShellTest {
    void SetUp() override {
        if (GetFileAttributesW(L"SciLexer.dll") != INVALID_FILE_ATTRIBUTES) {
            GTEST_SKIP() << "SciLexer.dll is there";
        }
        ShellTest::SetUp();
    }
};

TEST_F(WithoutScintilla, EveryWayToAPaneIsHarmless) {
    answer("SciLexer DLL could not be loaded", IDOK);
    start(web_of("Hi", cell_of("plan", "a plan")));
    EXPECT_EQ(text_pane(), nullptr);
    EXPECT_EQ(status_text(), "Ready");
    EXPECT_EQ(item_count(), 2);
    for (const int tab : {1, 2, 0, 1}) {
        show_tab(tab);
    }
    for (const int id : {CMD_UNDO, CMD_CUT, CMD_COPY, CMD_PASTE, CMD_DELETE, CMD_SELECT_ALL,
                         CMD_FOLLOW, CMD_CELL_NEXT, CMD_CELL_PREVIOUS, CMD_BACK, CMD_REPORT,
                         CMD_HELP_OVERVIEW, CMD_NEXT_PANE, CMD_NEXT_PANE, CMD_CLOSE_MODELESS}) {
        command(static_cast<WORD>(id));
    }
    answer("Enter New Cellname", IDCANCEL);
    show_tab(1);
    command(CMD_CELL_NEW);
    hot_spot_click(0);
    hide_selection_once();
    restyle_panes();
    new_cell("fresh");
    EXPECT_EQ(current_name(), "fresh");
    command(CMD_FILE_SAVE);
    EXPECT_NE(file_bytes(path).find("<text>a plan</text>"), std::string::npos);
    EXPECT_EQ(stored_text("home"), "Hi");
    command(CMD_QUIT);
    EXPECT_EQ(ended_with(), 0);
}
