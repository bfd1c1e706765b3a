// The cell list: its items, and choosing them with the mouse and the keys.
#include "shell/cell_list.h"

#include "core/block_arena.h"
#include "core/host_view.h"
#include "tests/shell/shell_test.h"
#include "web/cell_ops.h"
#include "web/trail.h"

#include <cstring>

namespace {

struct CellList : ShellTest {};

HWND list() {
    return pane_window(k_pane_list);
}

HTREEITEM first() {
    return reinterpret_cast<HTREEITEM>(SendMessageW(list(), TVM_GETNEXTITEM, TVGN_ROOT, 0));
}

void click_item(HTREEITEM item) {
    RECT rect;
    memcpy(&rect, &item, sizeof item);
    ASSERT_TRUE(SendMessageW(list(), TVM_GETITEMRECT, TRUE, as_lparam(&rect)));
    const LPARAM point = MAKELPARAM(rect.left + 4, (rect.top + rect.bottom) / 2);
    PostMessageW(list(), WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(list(), WM_LBUTTONUP, 0, point);
    run();
}

TEST_F(CellList, ClickGoesToTheCellAndTheProgramsOwnSelectionDoesNot) {
    start(web_of("", cell_of("alpha", "first") + cell_of("plan", "")));
    SendMessageW(list(), TVM_SELECTITEM, TVGN_CARET, as_lparam(first()));
    run();
    EXPECT_EQ(current_name(), "home");
    SetFocus(pane_window(k_pane_box));
    SetFocus(list());
    EXPECT_EQ(active_pane(), k_pane_list);
    EXPECT_EQ(selected_item(), "home") << "the focus brings the current cell back";
    click_item(first());
    EXPECT_EQ(current_name(), "alpha");
    EXPECT_EQ(pane_text(text_pane()), "first");
    EXPECT_EQ(box_text(), "alpha");
    EXPECT_TRUE(has_focus(list()));
    command(CMD_BACK);
    EXPECT_EQ(selected_item(), "home");
}

TEST_F(CellList, HasACellOnceThatWasMadeWhileQuittingAsked) {
    start();
    set_web_changed(true);
    answer_with("Save current changes in (untitled)?", [](HWND dialog) {
        new_cell("plan");
        press_button(dialog, IDYES);
    });
    answer("Save As", IDCANCEL);
    command(CMD_QUIT);
    EXPECT_EQ(item_count(), 2);
    EXPECT_EQ(selected_item(), "plan");
}

// The offer to save and exit, taken up in the middle of bringing a deleted name back, fills the
// list from within.
TEST_F(CellList, HasANameOnceThatCameBackWhileSavingFailed) {
    start(web_of("Hi", cell_of("plan", "old")));
    command(CMD_CELL_NEXT);
    answer("Delete current cell?", IDOK);
    command(CMD_CELL_DELETE);
    const CellHandle dead = index_find(index_root(), "plan");
    while (blocks_free() > 100) {
        block_alloc(k_block_plain);
    }
    answer("Short On Memory--Save And Exit?", IDOK);
    answer_with("Save current changes in test?", [this](HWND dialog) {
        DeleteFileA(path.c_str());
        CreateDirectoryA(path.c_str(), nullptr);
        answer_always("Short On Memory", IDCANCEL);
        press_button(dialog, IDYES);
    });
    new_cell("plan");
    RemoveDirectoryA(path.c_str());
    EXPECT_EQ(current_cell(), dead) << "the record of the name serves again";
    EXPECT_EQ(item_count(), 2);
    EXPECT_EQ(selected_item(), "plan");
}

TEST_F(CellList, AnItemOfNoLiveCellLeadsNowhere) {
    start(web_of("Hi", cell_of("plan", "")));
    command(CMD_CELL_NEXT);
    const CellHandle dead = current_cell();
    answer("Delete current cell?", IDOK);
    command(CMD_CELL_DELETE);
    NMTREEVIEWW change = {};
    change.hdr = {list(), CTL_CELL_LIST, TVN_SELCHANGEDW};
    change.action = TVC_BYMOUSE;
    change.itemNew.lParam = dead;
    SendMessageW(main_window(), WM_NOTIFY, CTL_CELL_LIST, as_lparam(&change));
    EXPECT_EQ(current_name(), "home");
    EXPECT_EQ(pane_text(text_pane()), "Hi");
}

TEST_F(CellList, KeysStepAndNothingElseDoes) {
    start(web_of("", cell_of("alpha", "") + cell_of("plan", "")));
    press(list(), VK_DOWN);
    EXPECT_EQ(current_name(), "plan");
    press(list(), VK_DOWN);
    EXPECT_EQ(current_name(), "alpha");
    press(list(), VK_UP);
    EXPECT_EQ(current_name(), "plan");
    for (const WPARAM key : {WPARAM{VK_LEFT}, WPARAM{VK_RIGHT}, WPARAM{VK_HOME}, WPARAM{'A'}}) {
        press(list(), key);
    }
    type(list(), "alpha");
    EXPECT_EQ(current_name(), "plan");
    EXPECT_EQ(selected_item(), "plan");
}

TEST_F(CellList, FollowsNewAndDeletedCells) {
    start();
    new_cell("zeta");
    new_cell("beta");
    EXPECT_EQ(item_count(), 3);
    EXPECT_EQ(selected_item(), "beta");
    answer("Delete current cell?", IDOK);
    command(CMD_CELL_DELETE);
    for (const ListItem item : {ListItem{12345}, ListItem{0}}) {
        cell_list_remove_item(item);
    }
    EXPECT_EQ(item_count(), 2);
    EXPECT_EQ(selected_item(), current_name());
    cell_list_clear();
    cell_list_select_current();
    EXPECT_EQ(item_count(), 0);
    cell_list_fill();
    EXPECT_EQ(item_count(), 2);
}

TEST_F(CellList, FillsQuickly) {
    std::string cells;
    for (int i = 1000; i < 4000; ++i) {
        cells += cell_of("cell" + std::to_string(i), "");
    }
    start(web_of("", cells));
    EXPECT_EQ(item_count(), 3001);
    const DWORD begun = GetTickCount();
    cell_list_clear();
    cell_list_fill();
    EXPECT_LT(GetTickCount() - begun, 2000U);
}

}  // namespace
