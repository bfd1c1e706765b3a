#include "shell/dialogs/dialogs.h"

namespace {

INT_PTR CALLBACK about_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        init_dialog(dialog, k_dialog_full_screen);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wparam) == IDOK || LOWORD(wparam) == IDCANCEL) {
            EndDialog(dialog, 1);
            return TRUE;
        }
        return FALSE;
    default:
        return FALSE;
    }
}

}  // namespace

void open_about_box() {
    run_dialog(L"ABOUTBOX", about_proc);
}
