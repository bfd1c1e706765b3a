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
