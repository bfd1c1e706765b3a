// The menu bar: what it is made of, and how its menus and buttons reach the program.
#include "desktop_test.h"

#include "resources/resource.h"

#include <commctrl.h>

namespace {

void click(HWND bar, int index) {
    RECT rect;
    SendMessageW(bar, TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect));
    const LPARAM point = MAKELPARAM((rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
    SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, point);
    SendMessageW(bar, WM_LBUTTONUP, 0, point);
}

TEST_F(DesktopTest, BarFitsTheHandheldAndItsButtonsAndMenusSendCommands) {
    open_window(L"240x320");
    RECT rect;
    ASSERT_EQ(SendMessageW(bar.hwndMB, TB_BUTTONCOUNT, 0, 0), 6);
    SendMessageW(bar.hwndMB, TB_GETITEMRECT, 5, reinterpret_cast<LPARAM>(&rect));
    EXPECT_TRUE(rect.right <= 240 && rect.bottom <= 26);
    click(bar.hwndMB, 4);
    click(bar.hwndMB, 5);
    EXPECT_TRUE(count_seen(WM_COMMAND, CMD_REPORT) && count_seen(WM_COMMAND, CMD_SPARE_BUTTON));
    menu_keys = {VK_DOWN, VK_RETURN};
    click(bar.hwndMB, 0);
    EXPECT_TRUE(pump_until([this] { return count_seen(WM_COMMAND, CMD_FILE_NEW) != 0; }));
    // To the last pop-up, around the end, and from there into the sub-menu.
    menu_keys = {VK_LEFT, VK_DOWN, VK_RIGHT, VK_DOWN, VK_RETURN};
    SendMessageW(window, WM_SYSCOMMAND, SC_KEYMENU, 0);
    EXPECT_TRUE(pump_until([this] { return count_seen(WM_COMMAND, CMD_HELP_REPORT_FORMAT) != 0; }));
    EXPECT_EQ(count_seen(WM_COMMAND), 4);
}

}  // namespace
