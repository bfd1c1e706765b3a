// The main window's frame: sizes, closing, activation, the current directory.
#include "desktop_test.h"

#include "resources/resource.h"

namespace {

struct ScreenCase {
    const wchar_t *screen;
    long width, height;
};

TEST_F(DesktopTest, FirstSizeIsTheClientArea) {
    const ScreenCase cases[] = {
        {L"300x400", 300, 400},  {L"240x320", 240, 320}, {L"", 360, 560},      {L"300x", 360, 560},
        {L"300x400 ", 360, 560}, {L"-5x9", 360, 560},    {L"20x10", 240, 200},
    };
    for (const ScreenCase &one : cases) {
        SCOPED_TRACE(testing::Message() << one.screen);
        open_window(one.screen);
        EXPECT_EQ(client_size().cx, one.width);
        EXPECT_EQ(client_size().cy, one.height);
        EXPECT_EQ(visible_desktop().right, one.width);
        EXPECT_EQ(visible_desktop().bottom, one.height);
        EXPECT_GE(count_seen(WM_SIZE), 1U);
        DestroyWindow(window);
    }
}

TEST_F(DesktopTest, BarStaysAtTheBottom) {
    open_window(L"300x400");
    const SIZE sizes[] = {{300, 400}, {500, 300}};
    for (const SIZE &size : sizes) {
        RECT outer = {0, 0, size.cx, size.cy};
        AdjustWindowRectEx(&outer, static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)), FALSE, 0);
        SetWindowPos(window, nullptr, 0, 0, outer.right - outer.left, outer.bottom - outer.top,
                     SWP_NOMOVE | SWP_NOZORDER);
        RECT place;
        GetWindowRect(bar.hwndMB, &place);
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT *>(&place), 2);
        EXPECT_EQ(place.left, 0);
        EXPECT_EQ(place.right, size.cx);
        EXPECT_EQ(place.bottom, size.cy);
        EXPECT_EQ(place.bottom - place.top, 26);
    }
}

TEST_F(DesktopTest, CannotBeMadeTooSmall) {
    open_window();
    SetWindowPos(window, nullptr, 0, 0, 20, 20, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(client_size().cx, 240);
    EXPECT_EQ(client_size().cy, 200);
}

TEST_F(DesktopTest, ProgramDoesNotSeeMinimising) {
    open_window(L"300x400");
    seen.clear();
    ShowWindow(window, SW_MINIMIZE);
    PostMessageW(window, WM_SIZE, 0, 0);
    pump();
    EXPECT_EQ(count_seen(WM_SIZE), 0U);
    EXPECT_EQ(visible_desktop().right, 300);
    EXPECT_EQ(visible_desktop().bottom, 400);
    ShowWindow(window, SW_RESTORE);
    EXPECT_TRUE(pump_until([this] { return count_seen(WM_SIZE) > 0; }));
    EXPECT_EQ(client_size().cy, 400);
}

TEST_F(DesktopTest, CloseButtonAsksAndCloseMessageCloses) {
    open_window();
    EnableWindow(window, FALSE);
    SendMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_FALSE(was_commanded(CMD_QUIT)) << "a dialog was open";
    EnableWindow(window, TRUE);
    SendMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(was_commanded(CMD_QUIT));
    EXPECT_TRUE(IsWindow(window));
    SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(DesktopTest, EndOfTheSessionAsks) {
    open_window();
    EXPECT_FALSE(SendMessageW(window, WM_QUERYENDSESSION, 0, 0));
    EXPECT_TRUE(was_commanded(CMD_QUIT));
}

TEST_F(DesktopTest, DirectoryComesBackAfterADialog) {
    wchar_t before[MAX_PATH];
    wchar_t after[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, before);
    open_window();
    EnableWindow(window, FALSE);
    ASSERT_TRUE(SetCurrentDirectoryW(L"C:\\windows"));
    EnableWindow(window, TRUE);
    GetCurrentDirectoryW(MAX_PATH, after);
    EXPECT_STREQ(before, after);
}

TEST_F(DesktopTest, FocusComesBackToTheControlThatHadIt) {
    open_window();
    for (HWND control : {edit, pane}) {
        SetFocus(control);
        SendMessageW(window, WM_ACTIVATE, WA_INACTIVE, 0);
        SetFocus(window);
        SendMessageW(window, WM_ACTIVATE, WA_ACTIVE, 0);
        EXPECT_EQ(GetFocus(), control);
    }
    SendMessageW(window, WM_ACTIVATE, WA_INACTIVE, 0);
    DestroyWindow(pane);
    SendMessageW(window, WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_TRUE(IsWindow(window));
}

}  // namespace
