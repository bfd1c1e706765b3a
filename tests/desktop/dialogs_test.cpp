// The dialog templates as SHInitDialog leaves them.
#include "desktop_test.h"

namespace {

INT_PTR CALLBACK dialog_proc(HWND dialog, UINT message, WPARAM, LPARAM flags) {
    if (message == WM_INITDIALOG) {
        SHINITDLGINFO info = {SHIDIM_FLAGS, dialog, static_cast<DWORD>(flags)};
        EXPECT_TRUE(SHInitDialog(&info));
    }
    return FALSE;
}

RECT place_of(HWND dialog, HWND control) {
    RECT rect;
    GetWindowRect(control, &rect);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT *>(&rect), 2);
    return rect;
}

// The width that a control's text needs, which is none but for buttons and labels.
long needed_width(HWND control) {
    wchar_t text[128] = L"";
    SIZE size = {};
    GetWindowTextW(control, text, 128);
    if ((SendMessageW(control, WM_GETDLGCODE, 0, 0) & (DLGC_BUTTON | DLGC_STATIC)) == 0 ||
        SendMessageW(control, STM_GETICON, 0, 0) != 0) {
        return 0;
    }
    HDC context = GetDC(control);
    SelectObject(context, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    GetTextExtentPoint32W(context, text, lstrlenW(text), &size);
    ReleaseDC(control, context);
    return size.cx;
}

// No text is cut off, no control covers another or the dialog's edge.
void check_layout(HWND dialog) {
    RECT client;
    RECT common;
    GetClientRect(dialog, &client);
    for (HWND one = GetWindow(dialog, GW_CHILD); one; one = GetWindow(one, GW_HWNDNEXT)) {
        const RECT rect = place_of(dialog, one);
        UnionRect(&common, &rect, &client);
        EXPECT_TRUE(EqualRect(&common, &client)) << "outside: " << GetDlgCtrlID(one);
        EXPECT_LE(needed_width(one), rect.right - rect.left) << "cut off: " << GetDlgCtrlID(one);
        for (HWND other = one; (other = GetWindow(other, GW_HWNDNEXT));) {
            const RECT place = place_of(dialog, other);
            EXPECT_FALSE(IntersectRect(&common, &rect, &place)) << "covered: " << GetDlgCtrlID(one);
        }
    }
}

TEST_F(DesktopTest, DialogsFitTheHandheldAndHaveAnOkButton) {
    open_window(L"240x320");
    for (const wchar_t *name :
         {L"CELLNAME", L"REPLBOX", L"FONTBOX", L"ABOUTBOX", L"ABORTBOX", L"NXTBOX"}) {
        SCOPED_TRACE(testing::Message() << name);
        const bool strip = lstrcmpW(name, L"NXTBOX") == 0;  // which is left alone
        const bool has_ok = !strip && lstrcmpW(name, L"ABORTBOX") != 0;
        HWND dialog = CreateDialogParamW(bar.hInstRes, name, window, dialog_proc,
                                         SHIDIF_DONEBUTTON | (strip ? 0 : SHIDIF_SIZEDLG));
        RECT client;
        ASSERT_TRUE(GetClientRect(dialog, &client));
        EXPECT_TRUE(strip || (client.right <= 240 && client.bottom <= 320 - 52));
        check_layout(dialog);
        EXPECT_EQ(GetDlgItem(dialog, IDOK) != nullptr, has_ok);
        EXPECT_TRUE(strip || SendMessageW(dialog, DM_GETDEFID, 0, 0) ==
                                 MAKELONG(has_ok ? IDOK : IDCANCEL, DC_HASDEFID));
        DestroyWindow(dialog);
    }
}

}  // namespace
