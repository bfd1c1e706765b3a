// Starting: which web is shown, under which name, and the single copy.
#include "resources/resource.h"
#include "shell/cellname_box.h"
#include "shell/main_window.h"
#include "shell/message_loop.h"
#include "shell/text_pane.h"
#include "tests/shell/answers.h"
#include "tests/shell/shell_test.h"
#include "web/cells.h"

struct Start : ShellTest {};

TEST_F(Start, MakesANewWeb) {
    start();
    EXPECT_EQ(text_of(main_window()), "Quorvane - (Untitled)");
    EXPECT_EQ(item_count(), 1);
    EXPECT_EQ(selected_item(), "home");
    EXPECT_EQ(box_text(), "home");
    EXPECT_EQ(status_text(), "Ready");
    EXPECT_EQ(current_view(), k_view_list);
    EXPECT_TRUE(has_focus(pane_window(k_pane_list)));
    EXPECT_FALSE(web_changed());
}

TEST_F(Start, FallsBackToANewWeb) {
    ASSERT_EQ(start_program(GetModuleHandleW(nullptr), L"\"none.qvx\"", SW_SHOWNORMAL), 0);
    ASSERT_TRUE(run_until([] { return item_count() == 1; }));
    EXPECT_EQ(text_of(main_window()), "Quorvane - (Untitled)");
    EXPECT_EQ(status_text(), "UNABLE TO OPEN WEB FILE");
}

TEST_F(Start, ClosingTheWindowSavesNothingAndEndsTheLoop) {
    const std::string web = web_of("Hi");
    start(web);
    show_tab(1);
    type(text_pane(), "more");
    SendMessageW(main_window(), WM_CLOSE, 0, 0);
    int code = -1;
    EXPECT_FALSE(message_loop_round(&code));
    EXPECT_EQ(code, 0);
    EXPECT_EQ(file_bytes(path), web);
    EXPECT_EQ(ended_with(), -99);
}

TEST_F(Start, QuitAsksAndSaves) {
    start(web_of("Hi"));
    show_tab(1);
    type(text_pane(), "Oh ");
    answer("Save current changes in test?", IDYES);
    command(CMD_QUIT);
    EXPECT_EQ(ended_with(), 0);
    EXPECT_NE(file_bytes(path).find("<text>Oh Hi</text>"), std::string::npos);
}

TEST_F(Start, QuitStaysWhenSavingFails) {
    start(web_of("Hi", cell_of("plan", "")));
    show_tab(1);
    type(text_pane(), "Oh ");
    DeleteFileA(path.c_str());
    CreateDirectoryA(path.c_str(), nullptr);
    answer("Save current changes in test?", IDYES);
    command(CMD_QUIT);
    RemoveDirectoryA(path.c_str());
    EXPECT_EQ(ended_with(), -99);
    EXPECT_EQ(item_count(), 2);
    EXPECT_EQ(pane_text(text_pane()), "Oh Hi");
}
