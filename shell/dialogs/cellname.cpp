// Asks for a new cell's name.
#include "core/host_messages.h"

#include "core/names.h"
#include "platform/windows/text_conversion.h"
#include "resources/resource.h"
#include "shell/dialogs/dialogs.h"

static struct CellnameDialog {
    wchar_t typed[k_cellname_max + 1];
    char answer[k_cellname_max + 1];
} cellname_dialog;

namespace {

// Keeps what was typed; the result of the dialog.
INT_PTR take_answer(HWND dialog) {
    GetDlgItemTextW(dialog, CTL_NEW_CELLNAME, cellname_dialog.typed, k_cellname_max + 1);
    copy_characters(cellname_dialog.answer, to_8bit(cellname_dialog.typed), k_cellname_max);
    return cellname_dialog.answer[0] != 0 ? 1 : 0;
}

INT_PTR CALLBACK cellname_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        init_dialog(dialog, k_dialog_full_screen);
        SetFocus(GetDlgItem(dialog, CTL_NEW_CELLNAME));
        return FALSE;  // the focus is where it belongs
    case WM_COMMAND:
        switch (LOWORD(wparam)) {
        case IDOK:
            EndDialog(dialog, take_answer(dialog));
            return TRUE;
        case IDCANCEL:
            EndDialog(dialog, 0);
            return TRUE;
        default:
            return FALSE;
        }
    default:
        return FALSE;
    }
}

}  // namespace

bool ask_cellname(char *name) {
    name[0] = 0;
    cellname_dialog.answer[0] = 0;
    if (run_dialog(L"CELLNAME", cellname_proc) != 1) {
        return false;
    }
    cellname_normalise(cellname_dialog.answer);
    if (!cellname_valid(cellname_dialog.answer)) {
        show_warning("Bad cell name supplied", k_product_name);
        return false;
    }
    copy_characters(name, cellname_dialog.answer, k_cellname_max);
    return true;
}
