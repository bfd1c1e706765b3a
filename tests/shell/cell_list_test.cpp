// The cell list: its items, and choosing them with the mouse and the keys.
#include "core/host.h"
#include "resources/resource.h"
#include "shell/main_window.h"
#include "shell/text_pane.h"
#include "tests/shell/shell_test.h"
#include "web/cell_ops.h"
#include "web/cells.h"
#include "web/trail.h"

#include <cstring>

struct CellList : ShellTest {
    HWND list() { return pane_window(k_pane_list); }

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
};

TEST_F(CellList, ClickGoesToTheCell) {
    start(web_of("", cell_of("alpha", "first") + cell_of("plan", "")));
    click_item(first());
    EXPECT_EQ(current_name(), "alpha");
    EXPECT_EQ(pane_text(text_pane()), "first");
    EXPECT_EQ(box_text(), "alpha");
    EXPECT_TRUE(has_focus(list()));
    command(CMD_BACK);
    EXPECT_EQ(selected_item(), "home");
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
