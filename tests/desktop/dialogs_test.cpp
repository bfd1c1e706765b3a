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
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    HRSRC resource = FindResourceW(instance, name, RT_DIALOG);
    HGLOBAL data = LoadResource(instance, resource);
    return CreateDialogIndirectParamW(instance,
                                      static_cast<const DLGTEMPLATE *>(LockResource(data)), owner,
                                      dialog_proc, static_cast<LPARAM>(flags));
}

RECT place_of(HWND dialog, HWND control) {
    RECT rect;
    GetWindowRect(control, &rect);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT *>(&rect), 2);
    return rect;
}

std::vector<HWND> controls_of(HWND dialog) {
    std::vector<HWND> controls;
    for (HWND one = GetWindow(dialog, GW_CHILD); one; one = GetWindow(one, GW_HWNDNEXT)) {
        controls.push_back(one);
    }
    return controls;
}

// The width that a control's text needs; buttons need a frame and a box more.
long needed_width(HWND control) {
    wchar_t text[128] = L"";
    wchar_t kind[16] = L"";
    SIZE size = {};
    GetWindowTextW(control, text, 128);
    GetClassNameW(control, kind, 16);
    const LONG type = GetWindowLongW(control, GWL_STYLE) & 0x1F;
    const bool is_button = lstrcmpiW(kind, L"BUTTON") == 0;
    if (!is_button && (lstrcmpiW(kind, L"STATIC") != 0 || type == SS_ICON)) {
        return 0;
    }
    HDC context = GetDC(control);
    HGDIOBJ font = reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0));
    HGDIOBJ previous = SelectObject(context, font);
    GetTextExtentPoint32W(context, text, lstrlenW(text), &size);
    SelectObject(context, previous);
    ReleaseDC(control, context);
    const long room = !is_button ? 0 : ((type & BS_TYPEMASK) == BS_AUTOCHECKBOX ? 18 : 8);
    return size.cx + room;
}

// No text is cut off, no control covers another or the dialog's edge.
void check_layout(HWND dialog) {
    RECT client;
    GetClientRect(dialog, &client);
    const std::vector<HWND> controls = controls_of(dialog);
    for (size_t first = 0; first < controls.size(); ++first) {
        const RECT rect = place_of(dialog, controls[first]);
        RECT common;
        UnionRect(&common, &rect, &client);
        wchar_t text[64] = L"";
        GetWindowTextW(controls[first], text, 64);
        EXPECT_TRUE(EqualRect(&common, &client)) << "outside: " << text;
        EXPECT_LE(needed_width(controls[first]), rect.right - rect.left) << "cut off: " << text;
        for (size_t second = first + 1; second < controls.size(); ++second) {
            const RECT other = place_of(dialog, controls[second]);
            EXPECT_FALSE(IntersectRect(&common, &rect, &other)) << "covered: " << text;
        }
    }
}

TEST_F(DesktopTest, DialogsFitTheHandheldAndHaveAnOkButton) {
    open_window(L"240x320");
    for (const wchar_t *name : {L"CELLNAME", L"REPLBOX", L"FONTBOX", L"ABOUTBOX", L"ABORTBOX"}) {
        SCOPED_TRACE(testing::Message() << name);
        HWND dialog = open_dialog(window, name, k_whole_screen);
        ASSERT_TRUE(dialog);
        RECT client;
        GetClientRect(dialog, &client);
        check_layout(dialog);
        EXPECT_LE(client.right, 240);
        EXPECT_LE(client.bottom, 320 - 52);
        EXPECT_GT(GetWindowTextLengthW(dialog), 0);
        const bool is_cancel_box = lstrcmpW(name, L"ABORTBOX") == 0;
        EXPECT_EQ(GetDlgItem(dialog, IDOK) == nullptr, is_cancel_box);
        EXPECT_EQ(LOWORD(SendMessageW(dialog, DM_GETDEFID, 0, 0)), is_cancel_box ? IDCANCEL : IDOK);
        DestroyWindow(dialog);
    }
}

TEST_F(DesktopTest, OkStandsBeforeCancelOfTheReplaceDialog) {
    open_window();
    HWND dialog = open_dialog(window, L"REPLBOX", k_whole_screen);
    HWND ok = GetDlgItem(dialog, IDOK);
    HWND cancel = GetDlgItem(dialog, CTL_REPLACE_CANCEL);
    EXPECT_EQ(place_of(dialog, ok).top, place_of(dialog, cancel).top);
    EXPECT_LT(place_of(dialog, ok).right, place_of(dialog, cancel).left);
    EXPECT_EQ(GetNextDlgTabItem(dialog, ok, FALSE), cancel);
    EXPECT_EQ(GetNextDlgTabItem(dialog, GetDlgItem(dialog, CTL_SEARCH_TEXT), FALSE),
              GetDlgItem(dialog, CTL_REPLACE_TEXT));
    DestroyWindow(dialog);
}

TEST_F(DesktopTest, StripIsLeftAlone) {
    open_window(L"240x320");
    HWND strip = open_dialog(window, L"NXTBOX", SHIDIF_DONEBUTTON);
    const RECT place = place_of(window, strip);
    EXPECT_EQ(controls_of(strip).size(), 4U);
    check_layout(strip);
    for (HWND control : controls_of(strip)) {
        EXPECT_LE(place_of(strip, control).right, 240);
        EXPECT_LE(place_of(strip, control).bottom, 18);
    }
    SHINITDLGINFO info = {SHIDIM_FLAGS, strip, k_whole_screen};
    EXPECT_TRUE(SHInitDialog(&info));
    const RECT after = place_of(window, strip);
    EXPECT_TRUE(EqualRect(&place, &after));
}

}  // namespace
