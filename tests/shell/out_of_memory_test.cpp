// The arena runs full through the window: nobody loses words, and the way out stays open.
#include "tests/shell/shell_test.h"

struct OutOfMemory : ShellTest {};

TEST_F(OutOfMemory, NothingIsLostWhatTheUserTries) {
    start_in_text(web_of("Hi", cell_of("plan", "a plan")));
    command(CMD_CELL_NEXT);
    command(CMD_CELL_NEXT);
    answer_always("Short On Memory", IDCANCEL);  // asked at each allocation from now on
    leave_free_blocks(1);
    const auto expect_refused = [](const std::string &text) {
        EXPECT_EQ(status_text(), "OUT OF MEMORY");
        EXPECT_EQ(shown() + "|" + selected_item(), "home|" + text + "|home");
        EXPECT_EQ(item_count(), 2);
        show_status_message("-");
    };
    select(text_pane(), 0, 2);
    command(CMD_CELL_NEW);
    expect_refused("Hi");
    const std::string text(4000, 'w');
    sci_text(text_pane(), SCI_SETTEXT, 0, text.c_str());
    command(CMD_CELL_NEXT);
    expect_refused(text);
    EXPECT_TRUE(sci(text_pane(), SCI_GETMODIFY));
    show_tab(2);
    EXPECT_EQ(current_view(), k_view_console);
    expect_refused(text);
    show_tab(0);
    // The second item, by a real press: the control is still at work when the blocks run out.
    HWND list = pane_window(k_pane_list);
    click_at(list, 8, static_cast<LONG>(SendMessageW(list, TVM_GETITEMHEIGHT, 0, 0)) * 3 / 2);
    expect_refused(text);
    sci_text(text_pane(), SCI_SETTEXT, 0, "short");
    EXPECT_EQ(after(CMD_CELL_NEXT, shown), "plan|a plan");
    EXPECT_EQ(stored_text("home"), "short");
    delete_by_command();
    EXPECT_EQ(shown(), "home|short");
    EXPECT_EQ(item_count(), 1);
}

// A command that still waited would show another cell in the middle of showing this one.
TEST_F(OutOfMemory, CommandsWaitForTheAnswerToTheOffer) {
    start(web_of("Hi", cell_of("plan", "a plan") + cell_of("words", "some words")));
    leave_free_blocks(100);
    answer_with("Short On Memory--Save And Exit?", [](HWND dialog) {
        answer_always("Short On Memory", IDCANCEL);
        command(CMD_CELL_NEXT);
        press_button(dialog, IDCANCEL);
    });
    EXPECT_EQ(after(CMD_CELL_NEXT, shown), "plan|a plan");
    EXPECT_EQ(text_pane_cell(), current_cell());
}
