// The dialog templates as SHInitDialog leaves them.
#include "desktop_test.h"

#include "tests/support/window_fits.h"

namespace {

INT_PTR CALLBACK dialog_proc(HWND dialog, UINT message, WPARAM, LPARAM flags) {
    if (message == WM_INITDIALOG) {
        SHINITDLGINFO info = {SHIDIM_FLAGS, dialog, static_cast<DWORD>(flags)};
        EXPECT_TRUE(SHInitDialog(&info));
    }
    return FALSE;
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
        expect_all_fits(dialog);
        EXPECT_EQ(GetDlgItem(dialog, IDOK) != nullptr, has_ok);
        EXPECT_TRUE(strip || SendMessageW(dialog, DM_GETDEFID, 0, 0) ==
                                 MAKELONG(has_ok ? IDOK : IDCANCEL, DC_HASDEFID));
        DestroyWindow(dialog);
    }
}

}  // namespace
