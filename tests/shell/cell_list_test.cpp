// The cell list: its items, and choosing them with the mouse and the keys.
#include "shell/cell_list.h"

#include "tests/shell/shell_test.h"

#include <cstring>

namespace {

struct CellList : ShellTest {};

HWND list() {
    return pane_window(k_pane_list);
}

TEST_F(CellList, ClickGoesToTheCellAndTheProgramsOwnSelectionDoesNot) {
    start(web_of("", cell_of("alpha", "first") + cell_of("plan")));
    const LRESULT first = SendMessageW(list(), TVM_GETNEXTITEM, TVGN_ROOT, 0);
    SendMessageW(list(), TVM_SELECTITEM, TVGN_CARET, first);
    run();
    EXPECT_EQ(current_name(), "home");
    SetFocus(pane_window(k_pane_box));
    SetFocus(list());
    EXPECT_EQ(active_pane(), k_pane_list);
    EXPECT_EQ(selected_item(), "home") << "the focus brings the current cell back";
    RECT rect;
    memcpy(&rect, &first, sizeof first);
    ASSERT_TRUE(SendMessageW(list(), TVM_GETITEMRECT, TRUE, as_lparam(&rect)));
    click_at(list(), rect.left + 4, (rect.top + rect.bottom) / 2);
    EXPECT_EQ(shown() + "|" + box_text(), "alpha|first|alpha");
    EXPECT_TRUE(has_focus(list()));
    EXPECT_EQ(after(CMD_BACK, selected_item), "home");
}

TEST_F(CellList, HasACellOnceThatWasMadeWhileQuittingAsked) {
    start();
    set_web_changed(true);
    answer_with("Save current changes in (untitled)?", [](HWND dialog) {
        new_cell("plan");
        press_button(dialog, IDYES);
    });
    answer("Save As", IDCANCEL);
    EXPECT_EQ(after(CMD_QUIT, item_count), 2);
    EXPECT_EQ(selected_item(), "plan");
}

// The offer to save and exit, taken up in the middle of bringing a deleted name back, fills the
// list from within.
TEST_F(CellList, HasANameOnceThatCameBackWhileSavingFailed) {
    start(web_of("Hi", cell_of("plan", "old")));
    command(CMD_CELL_NEXT);
    delete_by_command();
    const CellHandle dead = index_find(index_root(), "plan");
    leave_free_blocks(100);
    answer("Short On Memory--Save And Exit?", IDOK);
    answer_with("Save current changes in test?", [this](HWND dialog) {
        fs::remove(path);
        fs::create_directory(path);
        answer_always("Short On Memory", IDCANCEL);
        press_button(dialog, IDYES);
    });
    new_cell("plan");
    EXPECT_EQ(current_cell(), dead) << "the record of the name serves again";
    EXPECT_EQ(item_count(), 2);
    EXPECT_EQ(selected_item(), "plan");
}

TEST_F(CellList, ADeletedCellsItemGoesAndOneOfNoLiveCellLeadsNowhere) {
    start(web_of("Hi", cell_of("plan")));
    command(CMD_CELL_NEXT);
    const CellHandle dead = current_cell();
    delete_by_command();
    EXPECT_EQ(item_count(), 1);
    EXPECT_EQ(selected_item(), "home");
    NMTREEVIEWW change = {};
    change.hdr = {list(), CTL_CELL_LIST, TVN_SELCHANGEDW};
    change.action = TVC_BYMOUSE;
    change.itemNew.lParam = dead;
    SendMessageW(main_window(), WM_NOTIFY, CTL_CELL_LIST, as_lparam(&change));
    EXPECT_EQ(shown(), "home|Hi");
    cell_list_remove_item(ListItem{12345});
    EXPECT_EQ(item_count(), 1);
    cell_list_clear();
    cell_list_select_current();
    EXPECT_EQ(item_count(), 0);
}

TEST_F(CellList, KeysStepAndNothingElseDoes) {
    start(web_of("", cell_of("alpha") + cell_of("plan")));
    const std::pair<WPARAM, const char *> steps[] = {
        {VK_DOWN, "plan"},  {VK_DOWN, "alpha"}, {VK_UP, "plan"}, {VK_LEFT, "plan"},
        {VK_RIGHT, "plan"}, {VK_HOME, "plan"},  {'A', "plan"},
    };
    for (const auto &[key, name] : steps) {
        press(list(), key);
        EXPECT_EQ(current_name() + "|" + selected_item(), std::string(name) + "|" + name) << key;
    }
    type(list(), "alpha");
    EXPECT_EQ(current_name() + "|" + selected_item(), "plan|plan");
}

}  // namespace
