// Asks what to search for and what to put in its place; then the search bar takes over. The fields
// are those of the settings' search page, with what they may hold.
#include "shell/dialogs/dialogs.h"

#include "core/busy.h"
#include "core/host_messages.h"
#include "resources/resource.h"
#include "shell/find/find.h"
#include "shell/find/search_bar.h"
#include "shell/settings/page.h"
#include "web/options.h"

static struct ReplaceDialog {
    HWND window;
    Settings draft;
} replace_dialog;

namespace {

constexpr INT_PTR k_start_search = 1;  // the dialog's result

void start(HWND dialog) {
    replace_dialog.window = dialog;
    set_search_in_progress(true);
    init_dialog(dialog, k_dialog_full_screen);
    settings_load(&replace_dialog.draft);
    page_fill(&k_search_page, dialog, &replace_dialog.draft);
}

void end(HWND dialog, INT_PTR result) {
    replace_dialog.window = nullptr;
    if (result != k_start_search) {
        set_search_in_progress(false);
    }
    EndDialog(dialog, result);
}

// A search does not make the web count as changed, as the same entries in the settings do.
void take_into_force() {
    set_option_starg(replace_dialog.draft.starg);
    set_option_srpl(replace_dialog.draft.srpl);
    set_option_search_case(replace_dialog.draft.search_case);
}

// The dialog stays open over an entry that does not fit.
void accept(HWND dialog) {
    Refusal refusal;
    if (!page_take(&k_search_page, dialog, &replace_dialog.draft, &refusal)) {
        page_refuse(dialog, dialog, &refusal);
    } else if (replace_dialog.draft.starg[0] == 0) {
        show_status_message("Nothing to search for");
        end(dialog, 0);
    } else {
        take_into_force();
        end(dialog, k_start_search);
    }
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
            accept(dialog);
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
