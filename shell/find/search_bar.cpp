#include "shell/find/search_bar.h"

#include "resources/resource.h"
#include "shell/base/dialog.h"
#include "shell/base/focus.h"
#include "shell/base/handles.h"
#include "shell/find/find.h"
#include "web/options.h"

static struct SearchBar { bool in_progress; } bar;

namespace {

void take_case_option() {
    const bool on =
        SendDlgItemMessageW(search_bar(), CTL_NEXT_CASE, BM_GETCHECK, 0, 0) == BST_CHECKED;
    set_option_search_case(on ? 1 : 0);
}

void show_case(HWND dialog) {
    SendDlgItemMessageW(dialog, CTL_NEXT_CASE, BM_SETCHECK,
                        option_search_case() == 1 ? BST_CHECKED : BST_UNCHECKED, 0);
}

void start_bar(HWND dialog) {
    init_dialog(dialog, k_dialog_plain);
    SetWindowPos(dialog, HWND_TOP, 0, k_top_band_height, 0, 0, SWP_NOSIZE);
    show_case(dialog);
}

void close_bar() {
    HWND window = search_bar();
    register_search_bar(nullptr);
    EnableWindow(main_window(), TRUE);
    set_search_in_progress(false);
    focus_active_pane();
    DestroyWindow(window);
}

INT_PTR on_command(WORD command) {
    switch (command) {
    case CTL_NEXT_FIND:
        take_case_option();
        find_next();
        return TRUE;
    case CTL_NEXT_REPLACE:
        take_case_option();
        replace_and_find();
        return TRUE;
    case IDOK:
    case IDCANCEL:
        close_bar();
        return TRUE;
    default:
        focus_active_pane();  // a click on the box has brought it here
        return FALSE;
    }
}

INT_PTR CALLBACK bar_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        start_bar(dialog);
        return TRUE;
    case WM_COMMAND:
        return on_command(LOWORD(wparam));
    case WM_CLOSE:
        close_bar();
        return TRUE;
    case WM_DESTROY:  // with the main window
        register_search_bar(nullptr);
        bar.in_progress = false;
        return FALSE;
    default:
        return FALSE;
    }
}

}  // namespace

bool search_in_progress() {
    return bar.in_progress;
}

void set_search_in_progress(bool in_progress) {
    bar.in_progress = in_progress;
    RECT client = {};
    GetClientRect(main_window(), &client);
    PostMessageW(main_window(), WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.right, client.bottom));
}

void open_search_bar() {
    set_search_in_progress(true);
    register_search_bar(open_modeless(L"NXTBOX", bar_proc));
    if (search_bar() == nullptr) {
        set_search_in_progress(false);
        return;
    }
    ShowWindow(search_bar(), SW_SHOW);
    focus_active_pane();
}

void search_bar_show_case() {
    if (search_bar() != nullptr) {
        show_case(search_bar());
    }
}
