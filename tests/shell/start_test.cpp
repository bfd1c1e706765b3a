// Starting and ending: which web is shown, under which name, and the single copy.
#include "shell/main_window.h"
#include "shell/message_loop.h"
#include "tests/shell/shell_test.h"

struct Start : ShellTest {};

TEST_F(Start, MakesANewWebWhenTheFileCannotBeOpened) {
    launch("\"none.qvx\"");
    EXPECT_EQ(text_of(main_window()), "Quorvane - (Untitled)");
    EXPECT_EQ(status_text(), "UNABLE TO OPEN WEB FILE");
    EXPECT_EQ(selected_item() + "|" + box_text(), "home|home");
    EXPECT_EQ(current_view(), k_view_list);
    EXPECT_TRUE(has_focus(pane_window(k_pane_list)));
    EXPECT_FALSE(web_changed());
}

TEST_F(Start, OpensTheFileNamedAndASecondCopyNothing) {
    start(web_of("Hi", cell_of("plan", "soon")));
    EXPECT_EQ(text_of(main_window()), "Quorvane - test");
    EXPECT_EQ(item_count(), 2);
    EXPECT_EQ(words(), "Hi");
    EXPECT_FALSE(web_changed());
    write_file("other.qvx", web_of("second"));
    for (const int how : {SW_SHOW, SW_MINIMIZE}) {
        ShowWindow(main_window(), how);
        run();
        EXPECT_FALSE(create_main_window(GetModuleHandleW(nullptr), L"other.qvx", SW_SHOWNORMAL));
        run();
        EXPECT_EQ(words(), "Hi");
        EXPECT_FALSE(IsIconic(main_window()));
    }
}

TEST_F(Start, TakesTheFirst62CharactersOfTheCommandLine) {
    const std::string name = std::string(58, 'w') + ".qvx";
    write_file(name, web_of("cut"));
    launch(name + " and more");
    EXPECT_EQ(words(), "cut");
}

TEST_F(Start, ClosingTheWindowSavesNothingAndEndsTheLoop) {
    const std::string web = web_of("Hi");
    start_in_text(web);
    type(text_pane(), "more");
    SendMessageW(main_window(), WM_CLOSE, 0, 0);
    int code = -1;
    EXPECT_FALSE(message_loop_round(&code));
    EXPECT_EQ(code, 0);
    EXPECT_EQ(file_bytes(path), web);
    EXPECT_EQ(ended_with(), k_still_running);
}

TEST_F(Start, QuitAsksAndSavesAndStaysWhenThatFails) {
    start_in_text(web_of("Hi", cell_of("plan")));
    type(text_pane(), "Oh ");
    fs::rename(path, "away");
    fs::create_directory(path);
    answer("Save current changes in test?", IDYES);
    command(CMD_QUIT);
    EXPECT_EQ(ended_with(), k_still_running);
    EXPECT_EQ(item_count(), 2);
    EXPECT_EQ(words(), "Oh Hi");
    fs::remove(path);
    fs::rename("away", path);
    answer("Save current changes in test?", IDYES);
    command(CMD_QUIT);
    EXPECT_EQ(ended_with(), 0);
    EXPECT_NE(file_bytes(path).find("<text>Oh Hi</text>"), std::string::npos);
}
