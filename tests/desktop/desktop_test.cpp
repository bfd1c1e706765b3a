#include "desktop_test.h"

#include "desktop/frame.h"
#include "resources/resource.h"

#include <algorithm>

namespace {

DesktopTest *test;

void create_controls(HWND window) {
    test->window = window;
    test->bar.hwndParent = window;
    test->bar.nToolBarId = RES_MAIN_BAR;
    test->bar.hInstRes = GetModuleHandleW(nullptr);
    test->bar.nBmpId = RES_BAR_IMAGES;
    test->bar.cBmpImages = BAR_IMAGE_COUNT;
    ASSERT_TRUE(SHCreateMenuBar(&test->bar));
    // As on the handheld, where the visible area is then the whole window.
    SetWindowPos(window, nullptr, 0, 0, 100, 100, SWP_NOMOVE | SWP_NOZORDER);
    test->pane = CreateWindowExW(0, L"Scintilla", L"", WS_CHILD | WS_VISIBLE, 0, 20, 100, 100,
                                 window, nullptr, test->bar.hInstRes, nullptr);
}

LRESULT CALLBACK program_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    test->seen.push_back({message, wparam});
    switch (message) {
    case WM_CREATE:
        create_controls(window);
        return 0;
    case WM_ENTERIDLE:
        if (!test->menu_keys.empty()) {
            PostMessageW(window, WM_KEYDOWN, test->menu_keys.front(), 0);
            test->menu_keys.pop_front();
        }
        return 0;
    case WM_ACTIVATE:
        SHHandleWMActivate(window, wparam, lparam, &test->activation, 0);
        return 0;
    default:
        return DefWindowProcW(window, message, wparam, lparam);
    }
}

}  // namespace

void open_dropped_file(const wchar_t *path) {
    test->opened.emplace_back(path);
}

void DesktopTest::SetUp() {
    static const HMODULE scintilla = LoadLibraryW(L"SciLexer.dll");
    ASSERT_TRUE(scintilla);
    WNDCLASSW description = {};
    description.lpfnWndProc = program_proc;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = L"DesktopTest";
    RegisterClassW(&description);
    test = this;
}

void DesktopTest::TearDown() {
    DestroyWindow(window);
    pump();
}

void DesktopTest::open_window(const wchar_t *screen) {
    SetEnvironmentVariableW(L"QUORVANE_SCREEN", screen);
    seen.clear();
    CreateWindowExW(0, L"DesktopTest", L"Desktop test", WS_BORDER, 0, 0, 0, 0, nullptr, nullptr,
                    GetModuleHandleW(nullptr), nullptr);
    ASSERT_TRUE(window && pane);
    EXPECT_EQ(count_seen(WM_SIZE), 0) << "a size before there are controls to lay out";
    ShowWindow(window, SW_SHOWNORMAL);
    pump();
}

long DesktopTest::count_seen(UINT message, WORD command) const {
    return static_cast<long>(std::count_if(seen.begin(), seen.end(), [=](SeenMessage one) {
        return one.message == message && (command == 0 || LOWORD(one.wparam) == command);
    }));
}

bool pump_until(const std::function<bool()> &done) {
    const DWORD start = GetTickCount();
    while (!done()) {
        if (GetTickCount() - start > 5000) {
            return false;
        }
        desktop_idle();
        pump();
    }
    return true;
}

void pump() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}
