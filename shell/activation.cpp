#include "shell/activation.h"

#include "shell/base/focus.h"

#include <aygshell.h>

static struct Activation { SHACTIVATEINFO record; } activation;

namespace {

constexpr DWORD k_record_size = 12;  // on the handheld, whose shell checks it
constexpr UINT k_pending = 1;        // in the record's spare bits

}  // namespace

void activation_reset() {
    activation = {};
    activation.record.cbSize = k_record_size;
}

LRESULT on_setting_change(HWND window, UINT, WPARAM wparam, LPARAM lparam) {
    SHHandleWMSettingChange(window, wparam, lparam, &activation.record);
    return 0;
}

LRESULT on_activate(HWND window, UINT, WPARAM wparam, LPARAM lparam) {
    const bool active = LOWORD(wparam) != WA_INACTIVE;
    if (active) {
        activation.record.fReserved = 0;
        activation.record.hwndLastFocus = nullptr;  // may be a pane that has gone out of sight
    }
    SHHandleWMActivate(window, wparam, lparam, &activation.record, 0);
    if (active && HIWORD(wparam) == 0) {
        restore_focus();
    }
    return 0;
}

LRESULT on_activation_request(HWND window, UINT, WPARAM, LPARAM) {
    if (GetActiveWindow() != window) {
        activation.record.fReserved = k_pending;
    }
    return 0;
}
