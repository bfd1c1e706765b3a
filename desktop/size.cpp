#include "desktop/size.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr SIZE k_default_size = {360, 560};
constexpr SIZE k_smallest_size = {240, 200};
constexpr long k_longest_side = 4000;

SIZE first_size() {
    SIZE size = k_default_size;
    wchar_t text[32];
    const DWORD length = GetEnvironmentVariableW(L"QUORVANE_SCREEN", text, 32);
    if (length > 0 && length < 32) {
        wchar_t *end = text;
        const long width = wcstol(text, &end, 10);
        const long height = *end == L'x' ? wcstol(end + 1, &end, 10) : 0;
        if (width > 0 && height > 0 && *end == 0) {
            size = {std::min(width, k_longest_side), std::min(height, k_longest_side)};
        }
    }
    return {std::max(size.cx, k_smallest_size.cx), std::max(size.cy, k_smallest_size.cy)};
}

SIZE outer_size(HWND window, SIZE client) {
    RECT rect = {0, 0, client.cx, client.cy};
    AdjustWindowRectEx(&rect, static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE)));
    return {rect.right - rect.left, rect.bottom - rect.top};
}

}  // namespace

void set_first_size(HWND window) {
    const SIZE size = outer_size(window, first_size());
    const RECT free_area = free_area_around(window);
    RECT rect;
    GetWindowRect(window, &rect);
    const long left = std::max(free_area.left, std::min(rect.left, free_area.right - size.cx));
    const long top = std::max(free_area.top, std::min(rect.top, free_area.bottom - size.cy));
    SetWindowPos(window, nullptr, left, top, size.cx, size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

void limit_size(HWND window, MINMAXINFO *info) {
    const SIZE size = outer_size(window, k_smallest_size);
    info->ptMinTrackSize = {size.cx, size.cy};
}

RECT free_area_around(HWND window) {
    MONITORINFO screen = {};
    screen.cbSize = sizeof screen;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &screen);
    return screen.rcWork;
}
