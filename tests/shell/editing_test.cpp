// Typing, the clipboard and undo in the panes.
#include "core/busy.h"
#include "tests/shell/shell_test.h"
#include "web/options.h"

namespace {

void press_with_control(HWND window, WPARAM key) {
    BYTE keys[256] = {};
    keys[VK_CONTROL] = 0x80;
    SetKeyboardState(keys);
    press(window, key);
    keys[VK_CONTROL] = 0;
    SetKeyboardState(keys);
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

}  // namespace

struct Editing : ShellTest {};

TEST_F(Editing, KeysWithCtrlTypeNothing) {
    start_in_text(web_of("Hi"));
    BYTE keys[256] = {};
    GetKeyboardState(keys);
    for (const bool alt : {false, true}) {
        keys[VK_CONTROL] = 0x80;
        keys[VK_MENU] = alt ? 0x80 : 0;
        SetKeyboardState(keys);
        SendMessageW(text_pane(), WM_CHAR, '+', 0);
        EXPECT_EQ(pane_text(text_pane()), alt ? "+Hi" : "Hi");
    }
    keys[VK_CONTROL] = keys[VK_MENU] = 0;
    SetKeyboardState(keys);
}

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

TEST_F(Editing, BothPanesUndoAndRedoByKey) {
    start();
    for (const int tab : {1, 2}) {
        show_tab(tab);
        HWND pane = active_pane_window();
        type(pane, "abc");
        press_with_control(pane, 'Z');
        EXPECT_EQ(pane_text(pane), "");
        press_with_control(pane, 'Y');
        EXPECT_EQ(pane_text(pane), "abc");
        press(pane, VK_INSERT);
        sci(pane, SCI_GOTOPOS, 0);
        type(pane, "x");
        EXPECT_EQ(pane_text(pane), "xabc") << "typed over";
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
    press_with_control(console_pane(), VK_SUBTRACT);
    EXPECT_EQ(zooms(), "-10 -10 -10");
    EXPECT_FALSE(web_changed());
    busy_set(true);
    turn_wheel(console_pane(), 1);
    busy_set(false);
    EXPECT_EQ(zooms(), "-10 -10 -10");
    EXPECT_EQ(status_text(), "OUTPUT IN USE");
}

TEST_F(Editing, ZoomingKeepsTheLineAtTheTop) {
    start_in_text(web_of(times(300, times(60, "word ") + "\r\n")));
    const auto first_line = [] {
        return sci(text_pane(), SCI_DOCLINEFROMVISIBLE, sci(text_pane(), SCI_GETFIRSTVISIBLELINE));
    };
    sci(text_pane(), SCI_ENSUREVISIBLE, 299);
    sci(text_pane(), SCI_SETFIRSTVISIBLELINE, sci(text_pane(), SCI_VISIBLEFROMDOCLINE, 100));
    for (const int notches : {4, -6, 30}) {
        turn_wheel(text_pane(), notches);
        UpdateWindow(text_pane());
        sci(text_pane(), SCI_ENSUREVISIBLE, 299);
        EXPECT_EQ(first_line(), 100) << notches;
    }
    show_tab(2);
    turn_wheel(console_pane(), -10);
    run_for(100);
    show_tab(1);
    sci(text_pane(), SCI_ENSUREVISIBLE, 299);
    EXPECT_EQ(first_line(), 100) << "zoomed while hidden";
    EXPECT_EQ(sci(text_pane(), SCI_GETWRAPMODE), SC_WRAP_WORD);
}
