// New cell, follow, Enter in the cellname box and its list, by the pane that has the focus.
#include "shell/cell_commands.h"

#include "resources/resource.h"
#include "shell/cellname_box.h"
#include "shell/main_window.h"
#include "shell/scintilla.h"
#include "shell/text_conversion.h"
#include "shell/text_pane.h"
#include "tests/shell/answers.h"
#include "tests/shell/shell_test.h"
#include "web/cell_ops.h"
#include "web/cells.h"
#include "web/trail.h"

namespace {

// Types a name into the dialog that asks for one.
void answer_name(const wchar_t *name, int button = IDOK) {
    answer_with("Enter New Cellname", [name, button](HWND dialog) {
        SetDlgItemTextW(dialog, CTL_NEW_CELLNAME, name);
        press_button(dialog, button);
    });
}

void put_in_box(const char *name) {
    SetFocus(pane_window(k_pane_box));
    SetWindowTextW(cellname_edit(), to_utf16(name));
}

void enter(const char *name) {
    put_in_box(name);
    press(cellname_edit(), VK_RETURN);
}

std::string list_entries() {
    std::string all;
    wchar_t text[128];
    HWND box = pane_window(k_pane_box);
    const LRESULT count = SendMessageW(box, CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        SendMessageW(box, CB_GETLBTEXT, static_cast<WPARAM>(i), as_lparam(text));
        all += std::string(i ? " " : "") + to_8bit(text);
    }
    return all;
}

}  // namespace

struct CellCommands : ShellTest {
    void start_in_text(const std::string &web) {
        start(web);
        show_tab(1);
    }
};

TEST_F(CellCommands, EnterGoesThereOrCreates) {
    start(web_of("", cell_of("plan", "")));
    enter("plan");
    EXPECT_EQ(current_name(), "plan");
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
    EXPECT_EQ(item_count(), 3);
}

TEST_F(CellCommands, LongCurrentNameIsItself) {
    const std::string name(48, 'n');
    start(web_of("", cell_of(name, "")));
    go_to_name(name.c_str());
    enter(name.c_str());
    enter(name.substr(0, 47).c_str());
    EXPECT_EQ(item_count(), 2);
    EXPECT_EQ(current_name(), name);
}

TEST_F(CellCommands, NewCellFromTheBox) {
    start();
    put_in_box("fresh");
    command(CMD_CELL_NEW);
    EXPECT_EQ(current_name(), "fresh");
    put_in_box("home");
    answer_name(L"12other");
    command(CMD_CELL_NEW);
    EXPECT_EQ(current_name(), "other");
    put_in_box("?");
    answer_name(L"Home");
    command(CMD_CELL_NEW);
    EXPECT_EQ(current_name(), "home");
    EXPECT_EQ(status_text(), "Cell already exists, linking to it");
}

TEST_F(CellCommands, NewCellFromTheSelection) {
    start_in_text(web_of("take word or plan or 99", cell_of("plan", "")));
    select(text_pane(), 5, 9);
    command(CMD_CELL_NEW);
    EXPECT_EQ(current_name(), "word");
    go_home();
    select(text_pane(), 13, 17);
    command(CMD_CELL_NEW);
    EXPECT_EQ(current_name(), "plan");
    EXPECT_EQ(status_text(), "Cell already exists, linking to it");
    go_home();
    select(text_pane(), 21, 23);
    command(CMD_CELL_NEW);
    EXPECT_EQ(status_text(), "Invalid Cellname");
    select(text_pane(), 0, 0);
    answer_name(L"ignored", IDCANCEL);
    command(CMD_CELL_NEW);
    EXPECT_EQ(current_name(), "home");
}

TEST_F(CellCommands, NewCellFromTheList) {
    start();
    answer_name(L"");
    command(CMD_CELL_NEW);
    answer_name(L"42");
    answer("Bad cell name supplied", IDOK);
    command(CMD_CELL_NEW);
    EXPECT_EQ(item_count(), 1);
    answer_name(L"fresh");
    command(CMD_CELL_NEW);
    EXPECT_EQ(current_name(), "fresh");
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

TEST_F(CellCommands, FollowByPane) {
    start_in_text(web_of("see plan", cell_of("plan", "")));
    select(text_pane(), 4, 8);
    command(CMD_FOLLOW);
    EXPECT_EQ(current_name(), "plan");
    command(CMD_BACK);
    select(text_pane(), 0, 0);
    command(CMD_FOLLOW);
    EXPECT_EQ(current_name(), "plan") << "forward";
    command(CMD_BACK);
    show_tab(0);
    command(CMD_FOLLOW);
    EXPECT_EQ(current_name(), "plan");
    command(CMD_BACK);
    put_in_box("home");
    command(CMD_FOLLOW);
    EXPECT_EQ(current_name(), "plan") << "the current name steps forward";
    put_in_box("1");
    command(CMD_FOLLOW);
    EXPECT_EQ(box_text(), "plan");
    EXPECT_EQ(status_text(), "Ready");
}

TEST_F(CellCommands, TheListShowsTheTrailAndJumps) {
    start(web_of("", cell_of("a", "") + cell_of("b", "") + cell_of("c", "")));
    for (const char *name : {"a", "b", "c"}) {
        go_to_name(name);
    }
    HWND box = pane_window(k_pane_box);
    SendMessageW(box, CB_SHOWDROPDOWN, TRUE, 0);
    EXPECT_EQ(list_entries(), "c b a home");
    SendMessageW(box, CB_SETCURSEL, 2, 0);
    SendMessageW(main_window(), WM_COMMAND, MAKEWPARAM(CTL_CELLNAME_BOX, CBN_SELCHANGE),
                 as_lparam(box));
    EXPECT_EQ(current_name(), "a");
    EXPECT_EQ(box_text(), "a");
    command(CMD_BACK);
    EXPECT_FALSE(SendMessageW(box, CB_GETDROPPEDSTATE, 0, 0));
    EXPECT_EQ(current_name(), "home");
    SendMessageW(box, CB_SHOWDROPDOWN, TRUE, 0);
    EXPECT_EQ(list_entries(), "home");
}

TEST_F(CellCommands, UnservedCommandsDoNothing) {
    start();
    command(CMD_SPARE_BUTTON);
    command(CMD_CLOSE_MODELESS);
    EXPECT_EQ(status_text(), "Ready");
}
