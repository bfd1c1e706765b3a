#include "shell/dispatch.h"

#include "shell/base/focus.h"
#include "shell/base/handles.h"
#include "shell/dialogs/cancel_box.h"
#include "shell/status_line.h"

static struct Dispatch { HACCEL accelerators; } dispatch;

namespace {

bool goes_to_dialog(MSG *message) {
    HWND dialogs[] = {cancel_box(), search_bar()};
    for (HWND dialog : dialogs) {
        if (dialog != nullptr && IsDialogMessageW(dialog, message) != 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

void load_accelerators() {
    dispatch.accelerators = LoadAcceleratorsW(program_instance(), L"QUORVANE");
}

void process_message(MSG *message) {
    if (goes_to_dialog(message)) {
        return;
    }
    if (TranslateAcceleratorW(main_window(), dispatch.accelerators, message) == 0) {
        TranslateMessage(message);
        DispatchMessageW(message);
    }
    status_timeout_check();
}
