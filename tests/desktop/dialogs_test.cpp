// The dialog templates as SHInitDialog leaves them.
#include "desktop_test.h"

#include "resources/resource.h"

namespace {

constexpr DWORD k_whole_screen = SHIDIF_DONEBUTTON | SHIDIF_SIZEDLG;

INT_PTR CALLBACK dialog_proc(HWND dialog, UINT message, WPARAM, LPARAM flags) {
    if (message == WM_INITDIALOG) {
        SHINITDLGINFO info = {SHIDIM_FLAGS, dialog, static_cast<DWORD>(flags)};
        EXPECT_TRUE(SHInitDialog(&info));
    }
    return FALSE;
}

HWND open_dialog(HWND owner, const wchar_t *name, DWORD flags) {
    return CreateDialogParamW(GetModuleHandleW(nullptr), name, owner, dialog_proc,
                              static_cast<LPARAM>(flags));
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
    for (const wchar_t *name : {L"CELLNAME", L"REPLBOX", L"FONTBOX", L"ABOUTBOX", L"ABORTBOX"}) {
        SCOPED_TRACE(testing::Message() << name);
        HWND dialog = open_dialog(window, name, k_whole_screen);
        ASSERT_TRUE(dialog);
        check_layout(dialog);
        RECT client;
        GetClientRect(dialog, &client);
        EXPECT_LE(client.right, 240);
        EXPECT_LE(client.bottom, 320 - 52);
        const bool is_cancel_box = lstrcmpW(name, L"ABORTBOX") == 0;
        EXPECT_EQ(GetDlgItem(dialog, IDOK) == nullptr, is_cancel_box);
        EXPECT_EQ(LOWORD(SendMessageW(dialog, DM_GETDEFID, 0, 0)), is_cancel_box ? IDCANCEL : IDOK);
        DestroyWindow(dialog);
    }
}

TEST_F(DesktopTest, TheStripIsLeftAlone) {
    open_window(L"240x320");
    HWND strip = open_dialog(window, L"NXTBOX", SHIDIF_DONEBUTTON);
    check_layout(strip);
    EXPECT_EQ(GetDlgItem(strip, IDOK), nullptr);
}

}  // namespace
