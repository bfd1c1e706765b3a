// Starting: which web is shown, under which name, and the single copy.
#include "platform/windows/text_conversion.h"
#include "shell/cellname_box.h"
#include "shell/message_loop.h"
#include "tests/shell/shell_test.h"

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

TEST_F(Start, OpensTheFileNamedAndASecondCopyNothing) {
    start(web_of("Hi", cell_of("plan", "soon")));
    EXPECT_EQ(text_of(main_window()), "Quorvane - test");
    EXPECT_EQ(item_count(), 2);
    EXPECT_EQ(pane_text(text_pane()), "Hi");
    EXPECT_FALSE(web_changed());
    write_file("other.qvx", web_of("second"));
    EXPECT_EQ(create_main_window(GetModuleHandleW(nullptr), L"other.qvx", SW_SHOWNORMAL), nullptr);
    run();
    EXPECT_EQ(pane_text(text_pane()), "Hi");
    ShowWindow(main_window(), SW_MINIMIZE);
    run();
    EXPECT_EQ(create_main_window(GetModuleHandleW(nullptr), L"other.qvx", SW_SHOWNORMAL), nullptr);
    run();
    EXPECT_FALSE(IsIconic(main_window()));
    DeleteFileA("other.qvx");
}

TEST_F(Start, TakesTheFirst62CharactersOfTheCommandLine) {
    const std::string name = std::string(58, 'w') + ".qvx";
    write_file(name, web_of("cut"));
    launch(to_utf16((name + " and more").c_str()));
    EXPECT_EQ(pane_text(text_pane()), "cut");
    DeleteFileA(name.c_str());
}

TEST_F(Start, FallsBackToANewWeb) {
    launch(L"\"none.qvx\"");
    EXPECT_EQ(text_of(main_window()), "Quorvane - (Untitled)");
    EXPECT_EQ(status_text(), "UNABLE TO OPEN WEB FILE");
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
    EXPECT_EQ(ended_with(), -99);
}

TEST_F(Start, QuitAsksAndSaves) {
    start_in_text(web_of("Hi"));
    type(text_pane(), "Oh ");
    answer("Save current changes in test?", IDYES);
    command(CMD_QUIT);
    EXPECT_EQ(ended_with(), 0);
    EXPECT_NE(file_bytes(path).find("<text>Oh Hi</text>"), std::string::npos);
}

TEST_F(Start, QuitStaysWhenSavingFails) {
    start_in_text(web_of("Hi", cell_of("plan", "")));
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
