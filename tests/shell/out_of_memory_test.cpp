// The arena runs full through the window: nobody loses words, and the way out stays open.
#include "core/block_arena.h"
#include "tests/shell/shell_test.h"
#include "web/cell_ops.h"
#include "web/trail.h"

// "Short On Memory" is asked at each allocation from now on; the user goes on.
static void answers_begin_refusing() {
    answer_always("Short On Memory", IDCANCEL);
}

struct OutOfMemory : ShellTest {
    // A web that leaves this many blocks free, with the text pane shown.
    void start_with_free_blocks(uint32_t count) {
        start_in_text(web_of("Hi", cell_of("plan", "a plan")));
        command(CMD_CELL_NEXT);
        command(CMD_CELL_NEXT);
        answers_begin_refusing();
        while (blocks_free() > count) {
            block_alloc(k_block_plain);
        }
    }
};

TEST_F(OutOfMemory, TextThatDoesNotFitStaysInThePane) {
    start_with_free_blocks(2);
    const std::string text(4000, 'w');
    sci_text(text_pane(), SCI_SETTEXT, 0, text.c_str());
    command(CMD_CELL_NEXT);
    EXPECT_EQ(status_text(), "OUT OF MEMORY");
    EXPECT_EQ(current_name(), "home");
    EXPECT_EQ(pane_text(text_pane()), text);
    EXPECT_TRUE(sci(text_pane(), SCI_GETMODIFY));
    EXPECT_EQ(item_count(), 2);
    EXPECT_EQ(selected_item(), "home");
    show_tab(2);
    EXPECT_EQ(current_view(), k_view_console);
    EXPECT_EQ(pane_text(text_pane()), text);
    sci_text(text_pane(), SCI_SETTEXT, 0, "short");
    command(CMD_CELL_NEXT);
    EXPECT_EQ(current_name(), "plan");
    EXPECT_EQ(stored_text("home"), "short");
}

TEST_F(OutOfMemory, SaveAndDeleteWork) {
    start_with_free_blocks(0);
    sci_text(text_pane(), SCI_SETTEXT, 0, std::string(4000, 'w').c_str());
    command(CMD_FILE_SAVE);
    EXPECT_NE(file_bytes(path).find("<text>a plan</text>"), std::string::npos);
    EXPECT_NE(file_bytes(path).find("</eof>"), std::string::npos);
    EXPECT_EQ(pane_text(text_pane()).size(), 4000U);
    EXPECT_TRUE(web_changed());
    sci_text(text_pane(), SCI_SETTEXT, 0, "Ho");
    command(CMD_CELL_NEXT);
    EXPECT_EQ(current_name(), "plan");
    answer("Delete current cell?", IDOK);
    command(CMD_CELL_DELETE);
    EXPECT_EQ(current_name(), "home");
    EXPECT_EQ(item_count(), 1);
}

TEST_F(OutOfMemory, CreatingACellLeavesTheWebAsItWas) {
    start_with_free_blocks(1);
    select(text_pane(), 0, 2);
    command(CMD_CELL_NEW);
    EXPECT_EQ(status_text(), "OUT OF MEMORY");
    EXPECT_EQ(item_count(), 2);
    EXPECT_EQ(current_name(), "home");
    command(CMD_CELL_NEXT);
    EXPECT_EQ(current_name(), "plan");
}

TEST_F(OutOfMemory, ChoosingInTheListWithTheMouseIsSafe) {
    start_with_free_blocks(0);
    sci_text(text_pane(), SCI_SETTEXT, 0, std::string(4000, 'w').c_str());
    show_tab(0);
    // The second item, by a real press: the control is still at work when the blocks run out.
    HWND list = pane_window(k_pane_list);
    const LRESULT height = SendMessageW(list, TVM_GETITEMHEIGHT, 0, 0);
    PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(8, height * 3 / 2));
    PostMessageW(list, WM_LBUTTONUP, 0, MAKELPARAM(8, height * 3 / 2));
    run();
    EXPECT_EQ(status_text(), "OUT OF MEMORY");
    EXPECT_EQ(item_count(), 2);
    EXPECT_EQ(pane_text(text_pane()).size(), 4000U);
}

// A command that still waited would show another cell in the middle of showing this one.
TEST_F(OutOfMemory, CommandsWaitForTheAnswerToTheOffer) {
    start(web_of("Hi", cell_of("plan", "a plan") + cell_of("words", "some words")));
    while (blocks_free() > 100) {
        block_alloc(k_block_plain);
    }
    answer_with("Short On Memory--Save And Exit?", [](HWND dialog) {
        answers_begin_refusing();
        command(CMD_CELL_NEXT);
        press_button(dialog, IDCANCEL);
    });
    command(CMD_CELL_NEXT);
    EXPECT_EQ(current_name(), "plan");
    EXPECT_EQ(text_pane_cell(), current_cell());
    EXPECT_EQ(pane_text(text_pane()), "a plan");
}

TEST_F(OutOfMemory, ShortOnMemoryOffersTheWayOut) {
    start_in_text(web_of("Hi"));
    type(text_pane(), "Oh ");
    while (blocks_free() > 101) {
        block_alloc(k_block_plain);
    }
    answer_with("Short On Memory--Save And Exit?", [](HWND dialog) {
        press_button(dialog, IDOK);
        answer_always("Short On Memory", IDCANCEL);  // the program is gone by then
    });
    answer("Save current changes in test?", IDYES);
    select(text_pane(), 0, 2);
    command(CMD_CELL_NEW);
    EXPECT_EQ(ended_with(), 0);
    EXPECT_NE(file_bytes(path).find("<text>Oh Hi</text>"), std::string::npos);
}
