#include "shell/dialogs/cancel_box.h"

#include "report/output.h"
#include "shell/base/dialog.h"
#include "shell/base/focus.h"
#include "shell/base/handles.h"

static struct CancelBox {
    HWND window;
    DWORD began_at;      // tick
    bool blocks_window;  // the main window takes no input meanwhile
} box;

namespace {

constexpr DWORD k_box_delay = 500;  // milliseconds before the box appears

INT_PTR CALLBACK cancel_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        init_dialog(dialog, k_dialog_box);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wparam) == IDCANCEL) {
            output_abort();
            cancel_box_take_away();
            return TRUE;
        }
        return FALSE;
    default:
        return FALSE;
    }
}

}  // namespace

HWND cancel_box() {
    return box.window;
}

void cancel_box_output_began(bool blocks_window) {
    box.blocks_window = blocks_window;
    box.began_at = GetTickCount();
    if (blocks_window) {
        EnableWindow(main_window(), FALSE);
    }
}

void cancel_box_show_when_slow() {
    if (box.window == nullptr && !output_aborted() && GetTickCount() - box.began_at > k_box_delay) {
        box.window = open_modeless(L"ABORTBOX", cancel_proc);
        ShowWindow(box.window, SW_SHOW);
        UpdateWindow(box.window);
    }
}

// The box goes after the main window can take the focus back, or another program would get it.
void cancel_box_take_away() {
    if (box.blocks_window) {
        box.blocks_window = false;
        EnableWindow(main_window(), TRUE);
        focus_active_pane();
    }
    if (box.window != nullptr) {
        HWND window = box.window;
        box.window = nullptr;
        DestroyWindow(window);
    }
}
