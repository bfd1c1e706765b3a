// New cell, follow, Enter in the cellname box and its list, by the pane that has the focus.
#include "shell/cell_commands.h"

#include "platform/windows/text_conversion.h"
#include "report/output.h"
#include "shell/cellname_box.h"
#include "tests/shell/shell_test.h"
#include "web/cell_ops.h"

namespace {

struct CellCommands : ShellTest {};

void put_in_box(const char *name) {
    SetFocus(pane_window(k_pane_box));
    SetWindowTextW(cellname_edit(), to_utf16(name));
}

void enter(const std::string &name) {
    put_in_box(name.c_str());
    press(cellname_edit(), VK_RETURN);
}

TEST_F(CellCommands, EnterGoesThereOrCreates) {
    const std::string longest(48, 'n');
    start(web_of("", cell_of("plan", "") + cell_of(longest, "")));
    enter("plan");
    EXPECT_EQ(current_name(), "plan");
    go_to_name(longest.c_str());
    enter(longest);
    enter(longest.substr(0, 47));  // which is all of it that is read
    EXPECT_EQ(current_name(), longest);
    EXPECT_FALSE(web_changed());
    enter("fresh");
    EXPECT_EQ(current_name(), "fresh");
    EXPECT_EQ(selected_item(), "fresh");
    EXPECT_TRUE(web_changed());
    enter("9bad");
    EXPECT_EQ(status_text(), "Invalid cellname");
    EXPECT_EQ(box_text(), "fresh");
    enter("FRESH");
    EXPECT_EQ(box_text(), "fresh");
    EXPECT_EQ(item_count(), 4);
}

TEST_F(CellCommands, NewCellAsksWhereTheNameWillNotDo) {
    start(web_of("99 word", cell_of("plan", "")));
    put_in_box("home");
    answer_name(L"Plan");
    command(CMD_CELL_NEW);
    EXPECT_EQ(current_name(), "plan");
    EXPECT_EQ(status_text(), "Cell already exists, linking to it");
    put_in_box("?");
    answer_name(L"12other");
    command(CMD_CELL_NEW);
    EXPECT_EQ(current_name(), "other");
    go_home();
    show_tab(1);
    select(text_pane(), 0, 2);
    command(CMD_CELL_NEW);
    EXPECT_EQ(status_text(), "Invalid Cellname");
    select(text_pane(), 0, 0);
    answer_name(L"asked");
    command(CMD_CELL_NEW);
    EXPECT_EQ(current_name(), "asked");
}

TEST_F(CellCommands, CloneAndDelete) {
    start_in_text(web_of("text"));
    answer_name(L"copy");
    command(CMD_CELL_CLONE);
    EXPECT_EQ(current_name(), "copy");
    EXPECT_EQ(pane_text(text_pane()), "text");
    type(text_pane(), "more ");
    answer("Delete current cell?", IDCANCEL);
    command(CMD_CELL_DELETE);
    EXPECT_EQ(current_name(), "copy");
    answer("Delete current cell?", IDOK);
    command(CMD_CELL_DELETE);
    EXPECT_EQ(current_name(), "home");
    EXPECT_EQ(pane_text(text_pane()), "text");
    command(CMD_CELL_DELETE);
    EXPECT_EQ(status_text(), "Can't Delete Home");
}

TEST_F(CellCommands, FollowingTheCurrentNameOrNoNameStepsForward) {
    start_in_text(web_of("9! plan", cell_of("plan", "")));
    go_to_name("plan");
    command(CMD_BACK);
    select(text_pane(), 0, 2);
    command(CMD_FOLLOW);
    EXPECT_EQ(current_name(), "plan");
    command(CMD_BACK);
    put_in_box("1");
    command(CMD_FOLLOW);
    EXPECT_EQ(box_text(), "home");
    command(CMD_FOLLOW);
    EXPECT_EQ(current_name(), "plan");
    EXPECT_EQ(status_text(), "Ready");
}

std::string list_entries() {
    std::string all;
    wchar_t text[128];
    HWND box = pane_window(k_pane_box);
    const WPARAM count = static_cast<WPARAM>(SendMessageW(box, CB_GETCOUNT, 0, 0));
    for (WPARAM i = 0; i < count; ++i) {
        SendMessageW(box, CB_GETLBTEXT, i, as_lparam(text));
        all += std::string(i ? " " : "") + to_8bit(text);
    }
    return all;
}

bool list_is_open() {
    return SendMessageW(pane_window(k_pane_box), CB_GETDROPPEDSTATE, 0, 0) != 0;
}

// Chooses an entry of the open list with the mouse.
void choose(WPARAM entry) {
    COMBOBOXINFO info = {};
    info.cbSize = sizeof info;
    ASSERT_TRUE(GetComboBoxInfo(pane_window(k_pane_box), &info));
    RECT rect;
    SendMessageW(info.hwndList, LB_GETITEMRECT, entry, as_lparam(&rect));
    const LPARAM point = MAKELPARAM(rect.left + 4, (rect.top + rect.bottom) / 2);
    PostMessageW(info.hwndList, WM_MOUSEMOVE, 0, point);
    PostMessageW(info.hwndList, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(info.hwndList, WM_LBUTTONUP, 0, point);
    run();
}

void open_list() {
    SetFocus(pane_window(k_pane_box));
    press(cellname_edit(), VK_F4);
    ASSERT_TRUE(list_is_open());
}

std::string shown_cell() {
    return box_text() + "|" + current_name();
}

TEST_F(CellCommands, TheListShowsTheTrailAndJumps) {
    start(web_of("", cell_of("a", "") + cell_of("b", "") + cell_of("c", "")));
    for (const char *name : {"a", "b", "c"}) {
        go_to_name(name);
    }
    open_list();
    EXPECT_EQ(list_entries(), "c b a home");
    choose(0);
    EXPECT_EQ(shown_cell(), "c|c") << "the current cell";
    open_list();
    choose(2);
    EXPECT_EQ(shown_cell(), "a|a");
    command(CMD_FOLLOW);
    EXPECT_EQ(current_name(), "c") << "the cell that was left can be gone forward to";
    open_list();
    command(CMD_CELL_NEXT);
    EXPECT_EQ(list_entries(), "home a home") << "an open list goes with the trail";
    command(CMD_BACK);
    EXPECT_FALSE(list_is_open());
    EXPECT_EQ(shown_cell(), "a|a");
    command(CMD_BACK);
    open_list();
    EXPECT_EQ(list_entries(), "home");
    press(cellname_edit(), VK_RETURN);
    EXPECT_FALSE(list_is_open());
}

// The list that was opened earlier holds what the trail was then.
TEST_F(CellCommands, KeysWalkTheTrailAsItIsNow) {
    start(web_of("", cell_of("alpha", "") + cell_of("beans", "")));
    go_to_name("alpha");
    go_to_name("beans");
    open_list();
    press(cellname_edit(), VK_F4);
    EXPECT_FALSE(list_is_open());
    command(CMD_BACK);
    EXPECT_EQ(shown_cell(), "alpha|alpha");
    press(cellname_edit(), VK_UP);
    EXPECT_EQ(shown_cell(), "alpha|alpha") << "nothing stands before the current cell";
    press(cellname_edit(), VK_DOWN);
    EXPECT_EQ(shown_cell(), "home|home");
    for (const char *name : {"beans", "alpha"}) {
        go_to_name(name);
    }
    for (HWND window : {cellname_edit(), pane_window(k_pane_box)}) {
        PostMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
        run();
        EXPECT_EQ(shown_cell(), "alpha|alpha") << "the wheel";
    }
    press(cellname_edit(), VK_NEXT);
    EXPECT_EQ(shown_cell(), "home|home") << "the oldest entry";
    go_to_name("alpha");
    type(cellname_edit(), "be");
    answer_with("Delete current cell?", [](HWND dialog) {
        EXPECT_EQ(shown_cell(), "alpha|alpha") << "the cell that the question is about";
        press_button(dialog, IDCANCEL);
    });
    command(CMD_CELL_DELETE);
}

TEST_F(CellCommands, AChoiceThatMovesNothingLeavesTheCurrentName) {
    start(web_of("", cell_of("alpha", "") + cell_of("beans", "")));
    go_to_name("alpha");
    go_to_name("beans");
    open_list();
    ASSERT_EQ(output_open(), 0);
    choose(1);
    EXPECT_EQ(status_text(), "OUTPUT IN USE");
    EXPECT_EQ(shown_cell(), "beans|beans");
    press(cellname_edit(), VK_DOWN);
    EXPECT_EQ(shown_cell(), "beans|beans");
    output_close();
}

TEST_F(CellCommands, ANameInOtherBytesCanBeChosen) {
    start(web_of("", cell_of("caf\xE9", "") + cell_of("plan", "")));
    go_to_cell(index_first(index_root()));
    ASSERT_EQ(current_name(), "caf\xE9");
    for (const bool by_key : {false, true}) {
        go_to_name("plan");
        open_list();
        by_key ? press(cellname_edit(), VK_DOWN) : choose(1);
        EXPECT_EQ(current_name(), "caf\xE9");
        EXPECT_EQ(box_text(), "caf\xC3\xA9");
    }
}

TEST_F(CellCommands, TypingReplacesTheNameInTheBox) {
    start(web_of("", cell_of("in_pointers", "") + cell_of("keys", "") + cell_of("plan", "")));
    go_to_name("in_pointers");
    press(GetFocus(), VK_TAB);
    ASSERT_TRUE(has_focus(cellname_edit()));
    type(cellname_edit(), "keys");
    press(cellname_edit(), VK_RETURN);
    EXPECT_EQ(shown_cell(), "keys|keys");
    command(CMD_BACK);
    type(cellname_edit(), "plan");
    press(cellname_edit(), VK_RETURN);
    EXPECT_EQ(shown_cell(), "plan|plan") << "behind a jump";
    type(cellname_edit(), "half");
    press(cellname_edit(), VK_ESCAPE);
    EXPECT_EQ(box_text(), "plan");
    type(cellname_edit(), "half");
    EXPECT_EQ(box_text(), "half") << "all is selected again";
    press(cellname_edit(), VK_TAB);
    EXPECT_EQ(box_text(), "plan") << "the box is left";
    EXPECT_EQ(SendMessageW(cellname_edit(), EM_GETSEL, 0, 0), 0) << "and looks like it";
    const LPARAM behind = MAKELPARAM(place_of(cellname_edit()).right - 8, 6);
    PostMessageW(cellname_edit(), WM_LBUTTONDOWN, MK_LBUTTON, behind);
    PostMessageW(cellname_edit(), WM_LBUTTONUP, 0, behind);
    run();
    type(cellname_edit(), "_2");
    EXPECT_EQ(box_text(), "plan_2") << "the mouse puts the caret where it points";
    press(cellname_edit(), VK_TAB);
    press(GetFocus(), VK_TAB);
    type(cellname_edit(), "half");
    SendMessageW(cellname_edit(), WM_KILLFOCUS, 0, 0);  // for another program, and back
    SendMessageW(cellname_edit(), WM_SETFOCUS, 0, 0);
    type(cellname_edit(), "way");
    EXPECT_EQ(box_text(), "halfway");
}

}  // namespace
