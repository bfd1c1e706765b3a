#include "shell/output_host.h"

#include "core/busy.h"
#include "core/host_messages.h"
#include "report/output.h"
#include "resources/resource.h"
#include "shell/base/handles.h"
#include "shell/dialogs/cancel_box.h"
#include "shell/dispatch.h"
#include "shell/panes/console_pane.h"

static struct OutputHost {
    DWORD pumped_at;  // tick at which the queue was looked at last
    bool under_way;
    bool quit_pending;  // the quit command waits for the report to let go
    bool system_quit;   // WM_QUIT does, with this exit code
    int exit_code;
} host;

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
    cancel_box_output_began(blocks_window);
}

// Looking at the queue costs far more than writing a character.
void pump_messages() {
    const DWORD now = GetTickCount();
    if (!host.under_way || now == host.pumped_at) {
        return;
    }
    host.pumped_at = now;
    cancel_box_show_when_slow();
    MSG message;
    while (!output_aborted() && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
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
    cancel_box_take_away();
    if (host.quit_pending) {
        host.quit_pending = false;
        PostMessageW(main_window(), WM_COMMAND, CMD_QUIT, 0);
    }
    if (host.system_quit) {
        host.system_quit = false;
        PostQuitMessage(host.exit_code);
    }
}
