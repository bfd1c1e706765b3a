#include "tests/support/window_fits.h"

#include <gtest/gtest.h>

namespace {

constexpr LONG k_check_width = 18;  // pixels that the square or circle of a button takes

bool is_group_box(HWND control) {
    return (SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_STATIC) != 0 &&
           (GetWindowLongW(control, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
}

void expect_text_fits(HWND control, LONG width, LONG height) {
    const LRESULT kind = SendMessageW(control, WM_GETDLGCODE, 0, 0);
    if ((kind & (DLGC_BUTTON | DLGC_STATIC)) == 0 ||
        SendMessageW(control, STM_GETICON, 0, 0) != 0) {
        return;
    }
    const bool pushed = (kind & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
    width -= (kind & DLGC_BUTTON) != 0 && !pushed ? k_check_width : 0;
    wchar_t text[512] = L"";
    GetWindowTextW(control, text, 512);
    RECT need = {0, 0, width, 0};
    HDC context = GetDC(control);
    SelectObject(context, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    DrawTextW(context, text, -1, &need, DT_CALCRECT | DT_WORDBREAK);
    ReleaseDC(control, context);
    EXPECT_TRUE(need.right <= width && need.bottom <= height) << "cut off: " << text;
}

}  // namespace

RECT place_in(HWND window, HWND control) {
    RECT rect;
    GetWindowRect(control, &rect);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT *>(&rect), 2);
    return rect;
}

void expect_all_fits(HWND window) {
    RECT client;
    RECT common;
    GetClientRect(window, &client);
    for (HWND one = GetWindow(window, GW_CHILD); one; one = GetWindow(one, GW_HWNDNEXT)) {
        const RECT rect = place_in(window, one);
        UnionRect(&common, &rect, &client);
        EXPECT_TRUE(EqualRect(&common, &client)) << "outside: " << GetDlgCtrlID(one);
        expect_text_fits(one, rect.right - rect.left, rect.bottom - rect.top);
        for (HWND other = one; (other = GetWindow(other, GW_HWNDNEXT));) {
            const RECT place = place_in(window, other);
            EXPECT_TRUE(is_group_box(one) || is_group_box(other) ||
                        !IntersectRect(&common, &rect, &place))
                << GetDlgCtrlID(one) << " covers " << GetDlgCtrlID(other);
        }
    }
}
