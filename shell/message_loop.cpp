#include "shell/message_loop.h"

#include "core/block_arena.h"
#include "desktop/frame.h"
#include "shell/base/scratch.h"
#include "shell/dispatch.h"
#include "shell/main_window.h"
#include "shell/panes/styles.h"
#include "shell/status_line.h"
#include "web/options.h"
#include "web/words.h"

static struct MessageLoop { DWORD ticked_at; } loop;

namespace {

constexpr int k_no_memory = -1;  // exit codes
constexpr int k_no_window = 16;

constexpr DWORD k_tick_milliseconds = 1000;

void one_second_tick() {
    status_timeout_check();
    restyle_panes();
}

void init_common_controls() {
    INITCOMMONCONTROLSEX classes = {};
    classes.dwSize = sizeof classes;
    classes.dwICC = ICC_TREEVIEW_CLASSES | ICC_BAR_CLASSES | ICC_TAB_CLASSES;
    InitCommonControlsEx(&classes);
}

}  // namespace

bool app_init() {
    if (!scratch_init()) {
        return false;
    }
    block_arena_init();
    option_defaults();
    char_classes_init();
    block_arena_allow_recovery(true);
    return true;
}

bool message_loop_round(int *exit_code) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        if (message.message == WM_QUIT) {
            *exit_code = static_cast<int>(message.wParam);
            return false;
        }
        process_message(&message);
    }
    const DWORD now = GetTickCount();
    if (now - loop.ticked_at > k_tick_milliseconds) {
        loop.ticked_at = now;
        one_second_tick();
    }
    return true;
}

int start_program(HINSTANCE instance, const wchar_t *command_line, int show) {
    if (!app_init()) {
        return k_no_memory;
    }
    if (create_main_window(instance, command_line, show) == nullptr) {
        return k_no_window;
    }
    load_accelerators();
    init_common_controls();
    return 0;
}

int run_message_loop(HINSTANCE instance, const wchar_t *command_line, int show) {
    int exit_code = start_program(instance, command_line, show);
    if (exit_code != 0) {
        return exit_code;
    }
    while (message_loop_round(&exit_code)) {
        desktop_idle();
    }
    return exit_code;
}
