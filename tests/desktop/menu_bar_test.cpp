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

TEST_F(DesktopTest, BarHasTheButtonsOfTheResource) {
    open_window(L"240x320");
    const wchar_t *texts[] = {L"File", L"Edit", L"Cell", L"Help"};
    ASSERT_EQ(SendMessageW(bar.hwndMB, TB_BUTTONCOUNT, 0, 0), 6);
    RECT rect;
    for (WPARAM index = 0; index < 6; ++index) {
        TBBUTTON button;
        wchar_t text[32] = L"";
        SendMessageW(bar.hwndMB, TB_GETBUTTON, index, reinterpret_cast<LPARAM>(&button));
        SendMessageW(bar.hwndMB, TB_GETBUTTONTEXTW, static_cast<WPARAM>(button.idCommand),
                     reinterpret_cast<LPARAM>(text));
        EXPECT_STREQ(text, index < 4 ? texts[index] : L"");
        SendMessageW(bar.hwndMB, TB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&rect));
        EXPECT_LE(rect.bottom, 26);
    }
    EXPECT_LE(rect.right, 240) << "the last button is cut off on the handheld's screen";
}

TEST_F(DesktopTest, ImageButtonsSendTheirCommands) {
    open_window();
    click(bar.hwndMB, 4);
    click(bar.hwndMB, 5);
    EXPECT_TRUE(was_commanded(CMD_REPORT));
    EXPECT_TRUE(was_commanded(CMD_SPARE_BUTTON));
}

TEST_F(DesktopTest, MenusOpenByMouseAndKeys) {
    open_window();
    menu_keys = {VK_DOWN, VK_RETURN};
    click(bar.hwndMB, 0);
    EXPECT_TRUE(pump_until([this] { return was_commanded(CMD_FILE_NEW); }));

    // To the last pop-up, around the end, and from there into the sub-menu.
    menu_keys = {VK_RIGHT, VK_UP, VK_RETURN};
    SendMessageW(window, WM_SYSCOMMAND, SC_KEYMENU, 0);
    EXPECT_TRUE(pump_until([this] { return was_commanded(CMD_SETTINGS); }));
    menu_keys = {VK_LEFT, VK_DOWN, VK_RIGHT, VK_DOWN, VK_RETURN};
    SendMessageW(window, WM_SYSCOMMAND, SC_KEYMENU, 0);
    EXPECT_TRUE(pump_until([this] { return was_commanded(CMD_HELP_REPORT_FORMAT); }));
    EXPECT_EQ(count_seen(WM_COMMAND), 3U);
}

TEST_F(DesktopTest, AMissingResourceMakesNoBar) {
    HWND plain = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPED, 0, 0, 100, 100, nullptr, nullptr,
                                 GetModuleHandleW(nullptr), nullptr);
    SHMENUBARINFO info = {};
    info.hwndParent = plain;
    info.hInstRes = GetModuleHandleW(nullptr);
    info.nToolBarId = RES_MAIN_BAR + 1;
    EXPECT_FALSE(SHCreateMenuBar(&info));
    EXPECT_EQ(info.hwndMB, nullptr);
    DestroyWindow(plain);
    open_window();
}

}  // namespace
