// Typing, the clipboard and undo in the panes.
#include "core/busy.h"
#include "tests/shell/shell_test.h"

namespace {

void press_with_control(HWND window, WPARAM key) {
    hold({VK_CONTROL});
    press(window, key);
    hold({});
}

void turn_wheel(HWND window, int notches) {
    const int way = notches < 0 ? -WHEEL_DELTA : WHEEL_DELTA;
    for (int turned = 0; turned != notches * WHEEL_DELTA; turned += way) {
        PostMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(MK_CONTROL, static_cast<WORD>(way)), 0);
    }
    run();
}

// Zoom as "option text console".
std::string zooms() {
    return std::to_string(option_zoom()) + " " + std::to_string(sci(text_pane(), SCI_GETZOOM)) +
           " " + std::to_string(sci(console_pane(), SCI_GETZOOM));
}

// The line of the text at the top, when the pane has broken all lines.
LRESULT first_line() {
    sci(text_pane(), SCI_ENSUREVISIBLE, 299);
    return sci(text_pane(), SCI_DOCLINEFROMVISIBLE, sci(text_pane(), SCI_GETFIRSTVISIBLELINE));
}

struct Editing : ShellTest {
    // A pane with 300 lines that wrap, the hundredth of them at the top.
    void start_in_long_text() {
        start_in_text(web_of(times(300, times(60, "word ") + "\r\n")));
        sci(text_pane(), SCI_ENSUREVISIBLE, 299);
        sci(text_pane(), SCI_SETFIRSTVISIBLELINE, sci(text_pane(), SCI_VISIBLEFROMDOCLINE, 100));
    }
};

TEST_F(Editing, UndoSurvivesSaveAndNeverBringsAnotherCellsTextIn) {
    start_in_text(web_of("at home", cell_of("plan", "a plan")));
    type(text_pane(), "x");
    EXPECT_FALSE(after(CMD_FILE_SAVE, web_changed));
    EXPECT_EQ(after(CMD_UNDO, words), "at home");
    EXPECT_TRUE(web_changed());
    type(text_pane(), "y");
    command(CMD_CELL_NEXT);
    EXPECT_EQ(after(CMD_UNDO, words), "a plan");
    EXPECT_EQ(stored_text("home"), "yat home");
}

TEST_F(Editing, TextIsBytesAndNulIsDropped) {
    start_in_text(web_of("caf\xC3\xA9 \xE2\x82\xAC \xFF"));
    EXPECT_EQ(words(), "caf\xC3\xA9 \xE2\x82\xAC \xFF");
    PostMessageW(text_pane(), WM_CHAR, 0xE4, 0);
    run();
    sci_text(text_pane(), SCI_ADDTEXT, 3, "a\0b");
    EXPECT_EQ(stored_text("home"), "caf\xC3\xA9 \xE2\x82\xAC \xFF") << "until the pane is left";
    show_tab(2);
    EXPECT_EQ(stored_text("home"), "\xC3\xA4"
                                   "abcaf\xC3\xA9 \xE2\x82\xAC \xFF");
}

TEST_F(Editing, ControlCharactersAndKeysWithCtrlDoNothing) {
    start_in_text(web_of("one\r\ntwo"));
    type(text_pane(), "\x01\x0c\x1b\x1f");
    hold({VK_CONTROL});
    for (const char key : {'L', 'D', 'U', 'T'}) {
        SendMessageW(text_pane(), WM_KEYDOWN, static_cast<WPARAM>(key), 0);
    }
    SendMessageW(text_pane(), WM_CHAR, '+', 0);
    EXPECT_EQ(words(), "one\r\ntwo");
    hold({VK_CONTROL, VK_MENU});
    SendMessageW(text_pane(), WM_CHAR, '+', 0);
    EXPECT_EQ(words(), "+one\r\ntwo");
    hold({});
}

TEST_F(Editing, CellsRememberTheirSelectionAndShowTheCaret) {
    start_in_text(web_of("one two", cell_of("plan", times(300, "a line\r\n"))));
    select(text_pane(), 4, 7);
    command(CMD_CELL_NEXT);
    sci(text_pane(), SCI_GOTOPOS, sci(text_pane(), SCI_GETLENGTH));
    EXPECT_EQ(after(CMD_CELL_NEXT, place), "home 4-7");
    show_tab(0);
    command(CMD_CELL_NEXT);
    show_tab(1);
    EXPECT_TRUE(caret_is_in_view());
    EXPECT_FALSE(web_changed());
}

TEST_F(Editing, PanesComeBackAsTheyWereLeft) {
    start_in_long_text();
    for (const DWORD time_away : {0U, 300U}) {  // in which the pane may put its lines together
        show_tab(0);
        run_for(time_away);
        show_tab(1);
        EXPECT_EQ(first_line(), 100) << time_away;
    }
    EXPECT_EQ(sci(text_pane(), SCI_GETWRAPMODE), SC_WRAP_WORD);
}

TEST_F(Editing, BothPanesUndoAndRedoByKeyAndNeverTypeOver) {
    start();
    for (const int tab : {1, 2}) {
        show_tab(tab);
        HWND pane = active_pane_window();
        type(pane, "abc");
        press_with_control(pane, 'Z');
        EXPECT_EQ(pane_text(pane), "");
        press_with_control(pane, 'Y');
        press(pane, VK_INSERT);
        sci(pane, SCI_GOTOPOS, 0);
        type(pane, "x");
        EXPECT_EQ(pane_text(pane), "xabc");
    }
}

TEST_F(Editing, TheWheelAndTheNumberPadZoomBothPanesWithinTheOptionsRange) {
    start_in_text(web_of("some text"));
    turn_wheel(text_pane(), 3);
    EXPECT_EQ(zooms(), "3 3 3");
    turn_wheel(text_pane(), 30);
    EXPECT_EQ(zooms(), "20 20 20");
    show_tab(2);
    turn_wheel(console_pane(), -40);
    EXPECT_EQ(zooms(), "-10 -10 -10");
    press_with_control(console_pane(), VK_ADD);
    EXPECT_EQ(zooms(), "-9 -9 -9");
    EXPECT_FALSE(web_changed());
    press_with_control(console_pane(), VK_SUBTRACT);
    busy_set(true);
    turn_wheel(console_pane(), 1);
    busy_set(false);
    EXPECT_EQ(zooms(), "-10 -10 -10");
    EXPECT_EQ(status_text(), "OUTPUT IN USE");
}

TEST_F(Editing, ZoomingKeepsTheLineAtTheTop) {
    start_in_long_text();
    for (const int notches : {4, -6, 30}) {
        turn_wheel(text_pane(), notches);
        UpdateWindow(text_pane());
        EXPECT_EQ(first_line(), 100) << notches;
    }
    show_tab(2);
    turn_wheel(console_pane(), -10);
    run_for(100);
    show_tab(1);
    EXPECT_EQ(first_line(), 100) << "zoomed while hidden";
}

}  // namespace
