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

// The name that New Cell finds or asks for; the dialog is cancelled where there is no answer.
TEST_F(CellCommands, NewCellTakesItsNameFromThePane) {
    constexpr const char *k_exists = "Cell already exists, linking to it";
    const struct {
        PaneIndex pane;
        const char *found;      // typed into the box, or selected
        const wchar_t *answer;  // null: nothing is asked
        const char *cell, *status;
    } rows[] = {
        {k_pane_box, "fresh", nullptr, "fresh", "-"},
        {k_pane_box, "home", L"12other", "other", "-"},
        {k_pane_box, "?", L"Home", "home", k_exists},
        {k_pane_list, "", L"", "home", "-"},
        {k_pane_list, "", L"added", "added", "-"},
        {k_pane_text, "word", nullptr, "word", "-"},
        {k_pane_text, " plan", nullptr, "plan", k_exists},
        {k_pane_text, "99", nullptr, "home", "Invalid Cellname"},
        {k_pane_text, "", L"asked", "asked", "-"},
        {k_pane_console, "printed", nullptr, "printed", "-"},
    };
    start(web_of("", cell_of("plan", "")));
    for (const auto &row : rows) {
        SCOPED_TRACE(row.found);
        go_home();
        show_tab(row.pane == k_pane_text ? 1 : row.pane == k_pane_console ? 2 : 0);
        show_status_message("-");
        if (row.pane == k_pane_box) {
            put_in_box(row.found);
        } else if (row.pane != k_pane_list) {
            sci_text(pane_window(row.pane), SCI_SETTEXT, 0, row.found);
            command(CMD_SELECT_ALL);
        }
        if (row.answer != nullptr) {
            answer_name(row.answer);
        }
        command(CMD_CELL_NEW);
        EXPECT_EQ(current_name(), row.cell);
        EXPECT_EQ(status_text(), row.status);
    }
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

TEST_F(CellCommands, FollowingTheBoxOrNoWordStepsForward) {
    start_in_text(web_of("9! plan", cell_of("plan", "")));
    const struct {
        int tab;
        const char *box;  // null: the focus stays in the pane
        LRESULT selected;
        const char *cell;
    } rows[] = {
        {0, nullptr, 0, "plan"}, {1, nullptr, 0, "plan"}, {1, nullptr, 2, "plan"},
        {0, "home", 0, "plan"},  {0, "1", 0, "home"},
    };
    for (const auto &row : rows) {
        go_home();
        go_to_name("plan");
        command(CMD_BACK);
        show_tab(row.tab);
        select(text_pane(), 0, row.selected);
        if (row.box != nullptr) {
            put_in_box(row.box);
        }
        command(CMD_FOLLOW);
        EXPECT_EQ(current_name(), row.cell);
        EXPECT_EQ(box_text(), row.cell);
        EXPECT_EQ(status_text(), "Ready");
    }
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
