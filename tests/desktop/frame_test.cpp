// The main window's frame: sizes and closing.
#include "desktop_test.h"

#include "resources/resource.h"
#include "tests/support/window_fits.h"

namespace {

TEST_F(DesktopTest, FirstSizeIsTheClientAreaWithTheBarAtItsBottom) {
    struct Row {
        const wchar_t *screen;
        long width, height;
    };
    for (const Row &row : {Row{L"300x400", 300, 400}, Row{L"", 360, 560}, Row{L"300x", 360, 560},
                           Row{L"300x400 ", 360, 560}, Row{L"20x10", 240, 200}}) {
        SCOPED_TRACE(testing::Message() << row.screen);
        open_window(row.screen);
        RECT client;
        const RECT place = place_in(window, bar.hwndMB);
        GetClientRect(window, &client);
        const RECT whole = {0, 0, row.width, row.height};
        const RECT bottom = {0, row.height - 26, row.width, row.height};
        EXPECT_TRUE(EqualRect(&client, &whole) && EqualRect(&place, &bottom));
        SetWindowPos(window, nullptr, 0, 0, 20, 20, SWP_NOMOVE | SWP_NOZORDER);
        GetClientRect(window, &client);
        EXPECT_EQ(client.bottom, 200) << "made too small";
        DestroyWindow(window);
    }
}

TEST_F(DesktopTest, ProgramDoesNotSeeMinimising) {
    open_window(L"300x400");
    seen.clear();
    ShowWindow(window, SW_MINIMIZE);
    pump();
    SIPINFO panel = {};
    EXPECT_TRUE(SHSipInfo(SPI_GETSIPINFO, 0, &panel, 0));
    EXPECT_EQ(count_seen(WM_SIZE), 0);
    EXPECT_EQ(panel.rcVisibleDesktop.bottom, 400);
    ShowWindow(window, SW_RESTORE);
    EXPECT_TRUE(pump_until([this] { return count_seen(WM_SIZE) > 0; }));
}

TEST_F(DesktopTest, CloseButtonAsksAndCloseMessageCloses) {
    open_window();
    EnableWindow(window, FALSE);
    SendMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(count_seen(WM_COMMAND, CMD_QUIT), 0) << "a dialog was open";
    EnableWindow(window, TRUE);
    SendMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(count_seen(WM_COMMAND, CMD_QUIT), 1);
    EXPECT_FALSE(SendMessageW(window, WM_QUERYENDSESSION, 0, 0));
    EXPECT_EQ(count_seen(WM_COMMAND, CMD_QUIT), 2);
    EXPECT_TRUE(IsWindow(window));
    SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(window));
}

}  // namespace
