#include "shell/output_host.h"

#include "core/busy.h"
#include "core/host_messages.h"
#include "report/output.h"
#include "resources/resource.h"
#include "shell/dialogs/dialogs.h"
#include "shell/main_window.h"
#include "shell/message_loop.h"
#include "shell/panes/console_pane.h"
#include "shell/views.h"

static struct OutputHost {
    HWND box;
    DWORD began_at;   // tick
    DWORD pumped_at;  // tick at which the queue was looked at last
    bool under_way;
    bool blocks_window;  // the main window takes no input meanwhile
    bool quit_pending;   // the quit command waits for the report to let go
    bool system_quit;    // WM_QUIT does, with this exit code
    int exit_code;
} host;

namespace {

constexpr DWORD k_box_delay = 500;  // milliseconds before the box appears

// The box goes after the main window can take the focus back, or another program would get it.
void take_box_away() {
    if (host.blocks_window) {
        host.blocks_window = false;
        EnableWindow(main_window(), TRUE);
        focus_active_pane();
    }
    if (host.box != nullptr) {
        HWND box = host.box;
        host.box = nullptr;
        DestroyWindow(box);
    }
}

INT_PTR CALLBACK cancel_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        init_dialog(dialog, k_dialog_box);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wparam) == IDCANCEL) {
            output_abort();
            take_box_away();
            return TRUE;
        }
        return FALSE;
    default:
        return FALSE;
    }
}

void show_box_when_slow() {
    if (host.box == nullptr && !output_aborted() && GetTickCount() - host.began_at > k_box_delay) {
        host.box = open_modeless(L"ABORTBOX", cancel_proc);
        ShowWindow(host.box, SW_SHOW);
        UpdateWindow(host.box);
    }
}

}  // namespace

HWND cancel_box() {
    return host.box;
}

bool quit_after_output() {
    if (!is_busy()) {
        return false;
    }
    host.quit_pending = true;
    output_abort();
    return true;
}

void output_began(bool blocks_window) {
    host.under_way = true;
    host.blocks_window = blocks_window;
    host.began_at = GetTickCount();
    if (blocks_window) {
        EnableWindow(main_window(), FALSE);
    }
}

// Looking at the queue costs far more than writing a character.
void pump_messages() {
    DWORD now = GetTickCount();
    if (!host.under_way || now == host.pumped_at) {
        return;
    }
    host.pumped_at = now;
    show_box_when_slow();
    MSG message;
    while (!output_aborted() && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            host.system_quit = true;
            host.exit_code = static_cast<int>(message.wParam);
            output_abort();
        } else {
            process_message(&message);
        }
    }
}

// The report is still on the stack: whatever ends the program waits in the queue until it is gone.
void output_ended() {
    host.under_way = false;
    console_show_pending();
    take_box_away();
    if (host.quit_pending) {
        host.quit_pending = false;
        PostMessageW(main_window(), WM_COMMAND, CMD_QUIT, 0);
    }
    if (host.system_quit) {
        host.system_quit = false;
        PostQuitMessage(host.exit_code);
    }
}
