// New cell, follow, Enter in the cellname box and its list, by the pane that has the focus.
#include "shell/cell_commands.h"

#include "shell/cellname_box.h"
#include "shell/text_conversion.h"
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

void choose(WPARAM entry) {
    HWND box = pane_window(k_pane_box);
    SendMessageW(box, CB_SETCURSEL, entry, 0);
    SendMessageW(main_window(), WM_COMMAND, MAKEWPARAM(CTL_CELLNAME_BOX, CBN_SELCHANGE),
                 as_lparam(box));
}

TEST_F(CellCommands, TheListShowsTheTrailAndJumps) {
    start(web_of("", cell_of("a", "") + cell_of("b", "") + cell_of("c", "")));
    for (const char *name : {"a", "b", "c"}) {
        go_to_name(name);
    }
    HWND box = pane_window(k_pane_box);
    const auto is_open = [=] { return SendMessageW(box, CB_GETDROPPEDSTATE, 0, 0) != 0; };
    SendMessageW(box, CB_SHOWDROPDOWN, TRUE, 0);
    EXPECT_EQ(list_entries(), "c b a home");
    choose(0);
    EXPECT_EQ(current_name(), "c") << "the current cell";
    choose(2);
    EXPECT_EQ(current_name(), "a");
    EXPECT_EQ(box_text(), "a");
    EXPECT_TRUE(is_open());
    command(CMD_BACK);
    EXPECT_FALSE(is_open());
    EXPECT_EQ(current_name(), "home");
    SendMessageW(box, CB_SHOWDROPDOWN, TRUE, 0);
    EXPECT_EQ(list_entries(), "home");
    press(cellname_edit(), VK_RETURN);
    EXPECT_FALSE(is_open());
}

}  // namespace
