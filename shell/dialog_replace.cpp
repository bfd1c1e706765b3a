// Asks what to search for and what to put in its place; then the search bar takes over.
#include "shell/dialogs.h"

#include "core/busy.h"
#include "core/host.h"
#include "resources/resource.h"
#include "shell/find.h"
#include "shell/search_bar.h"
#include "shell/text_conversion.h"
#include "web/options.h"

static struct ReplaceDialog {
    HWND window;
    char search[k_search_max + 1];
    char replacement[k_search_max + 1];
} replace_dialog;

namespace {

constexpr INT_PTR k_start_search = 1;  // the dialog's result

void fill(HWND dialog, int control, const char *text) {
    SendDlgItemMessageW(dialog, control, EM_LIMITTEXT, k_search_max, 0);
    SetDlgItemTextW(dialog, control, to_utf16(text));
}

void read(HWND dialog, int control, char *text) {
    wchar_t typed[k_search_max + 1];
    GetDlgItemTextW(dialog, control, typed, k_search_max + 1);
    utf8_copy(text, k_search_max + 1, typed);
}

void start(HWND dialog) {
    replace_dialog = {};
    replace_dialog.window = dialog;
    set_search_in_progress(true);
    init_dialog(dialog, k_dialog_full_screen);
    fill(dialog, CTL_SEARCH_TEXT, option_starg());
    fill(dialog, CTL_REPLACE_TEXT, option_srpl());
    SendDlgItemMessageW(dialog, CTL_SEARCH_CASE, BM_SETCHECK,
                        option_search_case() == 1 ? BST_CHECKED : BST_UNCHECKED, 0);
}

void end(HWND dialog, INT_PTR result) {
    replace_dialog.window = nullptr;
    if (result != k_start_search) {
        set_search_in_progress(false);
    }
    EndDialog(dialog, result);
}

// The result of the dialog.
INT_PTR take(HWND dialog) {
    read(dialog, CTL_SEARCH_TEXT, replace_dialog.search);
    if (replace_dialog.search[0] == 0) {
        show_status_message("Nothing to search for");
        return 0;
    }
    read(dialog, CTL_REPLACE_TEXT, replace_dialog.replacement);
    bool match_case =
        SendDlgItemMessageW(dialog, CTL_SEARCH_CASE, BM_GETCHECK, 0, 0) == BST_CHECKED;
    set_option_starg(replace_dialog.search);
    set_option_srpl(replace_dialog.replacement);
    set_option_search_case(match_case ? 1 : 0);
    return k_start_search;
}

INT_PTR CALLBACK replace_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        start(dialog);
        return TRUE;
    case WM_COMMAND:
        switch (LOWORD(wparam)) {
        case IDOK:
        case CTL_REPLACE_START:
            end(dialog, take(dialog));
            return TRUE;
        case IDCANCEL:
        case CTL_REPLACE_CANCEL:
            end(dialog, 0);
            return TRUE;
        default:
            return FALSE;
        }
    case WM_CLOSE:
        end(dialog, 0);
        return TRUE;
    default:
        return FALSE;
    }
}

}  // namespace

// The bar opens once the dialog is gone: the focus that a closing dialog gives back would otherwise
// be taken from it.
void open_replace_dialog() {
    if (search_bar() != nullptr || replace_dialog.window != nullptr || refused_while_busy()) {
        return;
    }
    if (run_dialog(L"REPLBOX", replace_proc) == k_start_search) {
        open_search_bar();
        find_next();
    }
}
