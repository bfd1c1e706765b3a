// The tabs along the bottom as they are drawn.
#include "desktop_test.h"

#include <commctrl.h>

namespace {

constexpr int k_height = 20;  // as in the main window

// A picture of a tab's inside, line by line: a sign for each dark pixel, a dot for any other.
std::string letters_of(HWND tabs, HDC picture, WPARAM index) {
    RECT rect;
    SendMessageW(tabs, TCM_GETITEMRECT, index, reinterpret_cast<LPARAM>(&rect));
    std::string letters;
    for (int y = 0; y < k_height; ++y) {
        for (long x = rect.left + 3; x < rect.right - 3; ++x) {
            const COLORREF colour = GetPixel(picture, x, y);
            const int light = GetRValue(colour) + GetGValue(colour) + GetBValue(colour);
            letters += light < 3 * 100 ? '#' : '.';
        }
    }
    return letters;
}

TEST_F(DesktopTest, LettersOfTheTabsStandClearOfTheLinesAndOnOneLine) {
    open_window(L"240x320");
    HWND tabs = CreateWindowExW(0, WC_TABCONTROLW, L"", WS_CHILD | WS_VISIBLE | TCS_BOTTOM, 0, 200,
                                200, k_height, window, nullptr, nullptr, nullptr);
    SendMessageW(tabs, TCM_SETITEMSIZE, 0, MAKELPARAM(30, k_height));
    for (WPARAM index = 0; index < 2; ++index) {
        wchar_t text[] = L"xxx";
        TCITEMW item = {};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        SendMessageW(tabs, TCM_INSERTITEMW, index, reinterpret_cast<LPARAM>(&item));
    }
    HDC screen = GetDC(tabs);
    HDC picture = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, 200, k_height);
    HGDIOBJ previous = SelectObject(picture, bitmap);
    SendMessageW(tabs, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(picture), PRF_CLIENT);
    const std::string letters = letters_of(tabs, picture, 0);
    EXPECT_EQ(letters, letters_of(tabs, picture, 1));
    const size_t below = letters.rfind('#') * k_height / letters.size() + 1;
    EXPECT_TRUE(below > 8 && below < 16) << "not on the line below: " << below;
    SelectObject(picture, previous);
    DeleteObject(bitmap);
    DeleteDC(picture);
    ReleaseDC(tabs, screen);
}

}  // namespace
