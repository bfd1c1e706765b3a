// New cell, follow, Enter in the cellname box and its list, by the pane that has the focus.
#include "tests/shell/shell_test.h"

namespace {

struct CellCommands : ShellTest {
    static void put_in_box(const char *name) {
        SetFocus(pane_window(k_pane_box));
        SetWindowTextW(cellname_edit(), to_utf16(name));
    }

    static void enter(const std::string &name) {
        put_in_box(name.c_str());
        press(cellname_edit(), VK_RETURN);
    }

    // The command, and the answer to the question for a name.
    static void name_it(WORD id, const wchar_t *name) {
        answer_with("Enter New Cellname", [name](HWND dialog) {
            SetDlgItemTextW(dialog, CTL_NEW_CELLNAME, name);
            press_button(dialog, IDOK);
        });
        command(id);
    }

    static std::string shown_cell() { return box_text() + "|" + current_name(); }

    static bool list_is_open() {
        return SendMessageW(pane_window(k_pane_box), CB_GETDROPPEDSTATE, 0, 0) != 0;
    }

    static void open_list() {
        SetFocus(pane_window(k_pane_box));
        press(cellname_edit(), VK_F4);
        ASSERT_TRUE(list_is_open());
    }
};

TEST_F(CellCommands, EnterGoesThereOrCreates) {
    const std::string longest(48, 'n');
    start(web_of("", cell_of("plan") + cell_of(longest)));
    enter("plan");
    EXPECT_EQ(current_name(), "plan");
    go_to_name(longest.c_str());
    enter(longest);
    enter(longest.substr(0, 47));  // which is all of it that is read
    EXPECT_EQ(current_name(), longest);
    EXPECT_FALSE(web_changed());
    enter("fresh");
    EXPECT_EQ(current_name() + "|" + selected_item(), "fresh|fresh");
    EXPECT_TRUE(web_changed());
    enter("9bad");
    EXPECT_EQ(status_text(), "Invalid cellname");
    EXPECT_EQ(box_text(), "fresh");
    enter("FRESH");
    EXPECT_EQ(box_text(), "fresh");
    EXPECT_EQ(item_count(), 4);
}

TEST_F(CellCommands, NewCellAsksWhereTheNameWillNotDoAndCloneAlways) {
    start(web_of("99 word", cell_of("plan")));
    put_in_box("home");
    name_it(CMD_CELL_NEW, L"Plan");
    EXPECT_EQ(current_name(), "plan");
    EXPECT_EQ(status_text(), "Cell already exists, linking to it");
    put_in_box("?");
    name_it(CMD_CELL_NEW, L"12other");
    EXPECT_EQ(current_name(), "other");
    go_home();
    show_tab(1);
    select(text_pane(), 0, 2);
    EXPECT_EQ(after(CMD_CELL_NEW, status_text), "Invalid Cellname");
    select(text_pane(), 0, 0);
    name_it(CMD_CELL_NEW, L"asked");
    EXPECT_EQ(current_name(), "asked");
    go_home();
    name_it(CMD_CELL_CLONE, L"copy");
    EXPECT_EQ(shown(), "copy|99 word");
}

TEST_F(CellCommands, FollowingTheCurrentNameOrNoNameStepsForward) {
    start_in_text(web_of("9! plan", cell_of("plan")));
    go_to_name("plan");
    command(CMD_BACK);
    select(text_pane(), 0, 2);
    EXPECT_EQ(after(CMD_FOLLOW, current_name), "plan");
    command(CMD_BACK);
    put_in_box("1");
    EXPECT_EQ(after(CMD_FOLLOW, box_text), "home");
    EXPECT_EQ(after(CMD_FOLLOW, current_name), "plan");
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

// Chooses an entry of the open list with the mouse.
void choose(WPARAM entry) {
    COMBOBOXINFO info = {};
    info.cbSize = sizeof info;
    ASSERT_TRUE(GetComboBoxInfo(pane_window(k_pane_box), &info));
    RECT rect;
    SendMessageW(info.hwndList, LB_GETITEMRECT, entry, as_lparam(&rect));
    const LONG y = (rect.top + rect.bottom) / 2;
    PostMessageW(info.hwndList, WM_MOUSEMOVE, 0, MAKELPARAM(rect.left + 4, y));
    click_at(info.hwndList, rect.left + 4, y);
}

TEST_F(CellCommands, TheListShowsTheTrailAndJumps) {
    start(web_of("", cell_of("a") + cell_of("b") + cell_of("c")));
    go_to_name("a");
    go_to_name("b");
    go_to_name("c");
    open_list();
    EXPECT_EQ(list_entries(), "c b a home");
    choose(0);
    EXPECT_EQ(shown_cell(), "c|c") << "the current cell";
    open_list();
    choose(2);
    EXPECT_EQ(shown_cell(), "a|a");
    EXPECT_EQ(after(CMD_FOLLOW, current_name), "c")
        << "the cell that was left can be gone forward to";
    open_list();
    EXPECT_EQ(after(CMD_CELL_NEXT, list_entries), "home a home")
        << "an open list goes with the trail";
    EXPECT_FALSE(after(CMD_BACK, list_is_open));
    EXPECT_EQ(shown_cell(), "a|a");
    command(CMD_BACK);
    open_list();
    EXPECT_EQ(list_entries(), "home");
    EXPECT_FALSE(after(cellname_edit(), VK_RETURN, list_is_open));
}

// The list that was opened earlier holds what the trail was then.
TEST_F(CellCommands, KeysWalkTheTrailAsItIsNow) {
    start(web_of("", cell_of("alpha") + cell_of("beans")));
    go_to_name("alpha");
    go_to_name("beans");
    open_list();
    EXPECT_FALSE(after(cellname_edit(), VK_F4, list_is_open));
    EXPECT_EQ(after(CMD_BACK, shown_cell), "alpha|alpha");
    EXPECT_EQ(after(cellname_edit(), VK_UP, shown_cell), "alpha|alpha")
        << "nothing stands before the current cell";
    EXPECT_EQ(after(cellname_edit(), VK_DOWN, shown_cell), "home|home");
    go_to_name("beans");
    go_to_name("alpha");
    for (HWND window : {cellname_edit(), pane_window(k_pane_box)}) {
        PostMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
        run();
        EXPECT_EQ(shown_cell(), "alpha|alpha") << "the wheel";
    }
    EXPECT_EQ(after(cellname_edit(), VK_NEXT, shown_cell), "home|home") << "the oldest entry";
    go_to_name("alpha");
    type(cellname_edit(), "be");
    answer_with("Delete current cell?", [](HWND dialog) {
        EXPECT_EQ(shown_cell(), "alpha|alpha") << "the cell that the question is about";
        press_button(dialog, IDCANCEL);
    });
    command(CMD_CELL_DELETE);
}

TEST_F(CellCommands, AChoiceThatMovesNothingLeavesTheCurrentName) {
    start(web_of("", cell_of("alpha") + cell_of("beans")));
    go_to_name("alpha");
    go_to_name("beans");
    open_list();
    ASSERT_EQ(output_open(), 0);
    choose(1);
    EXPECT_EQ(status_text(), "OUTPUT IN USE");
    EXPECT_EQ(shown_cell(), "beans|beans");
    EXPECT_EQ(after(cellname_edit(), VK_DOWN, shown_cell), "beans|beans");
    EXPECT_FALSE(after(cellname_edit(), VK_F4, list_is_open)) << "rolled up again";
    output_close();
}

TEST_F(CellCommands, ANameInOtherBytesCanBeChosen) {
    start(web_of("", cell_of("caf\xE9") + cell_of("plan")));
    go_to_cell(index_first(index_root()));
    ASSERT_EQ(current_name(), "caf\xE9");
    for (const bool by_key : {false, true}) {
        go_to_name("plan");
        open_list();
        by_key ? press(cellname_edit(), VK_DOWN) : choose(1);
        EXPECT_EQ(shown_cell(), "caf\xC3\xA9|caf\xE9");
    }
}

TEST_F(CellCommands, TypingReplacesTheNameInTheBox) {
    start(web_of("", cell_of("in_pointers") + cell_of("keys") + cell_of("plan")));
    go_to_name("in_pointers");
    press(GetFocus(), VK_TAB);
    ASSERT_TRUE(has_focus(cellname_edit()));
    type(cellname_edit(), "keys");
    EXPECT_EQ(after(cellname_edit(), VK_RETURN, shown_cell), "keys|keys");
    command(CMD_BACK);
    type(cellname_edit(), "plan");
    EXPECT_EQ(after(cellname_edit(), VK_RETURN, shown_cell), "plan|plan") << "behind a jump";
    type(cellname_edit(), "half");
    EXPECT_EQ(after(cellname_edit(), VK_ESCAPE, box_text), "plan");
    EXPECT_EQ(after(cellname_edit(), "half", box_text), "half") << "all is selected again";
    EXPECT_EQ(after(cellname_edit(), VK_TAB, box_text), "plan") << "the box is left";
    EXPECT_EQ(SendMessageW(cellname_edit(), EM_GETSEL, 0, 0), 0) << "and looks like it";
    click_at(cellname_edit(), place_of(cellname_edit()).right - 8, 6);
    EXPECT_EQ(after(cellname_edit(), "_2", box_text), "plan_2")
        << "the mouse puts the caret where it points";
    press(cellname_edit(), VK_TAB);
    press(GetFocus(), VK_TAB);
    type(cellname_edit(), "half");
    SendMessageW(cellname_edit(), WM_KILLFOCUS, 0, 0);  // for another program, and back
    SendMessageW(cellname_edit(), WM_SETFOCUS, 0, 0);
    EXPECT_EQ(after(cellname_edit(), "way", box_text), "halfway");
}

}  // namespace
