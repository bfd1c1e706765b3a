#include "shell/activation.h"

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
    if (LOWORD(wparam) != WA_INACTIVE) {
        activation.record.fReserved = 0;
    }
    SHHandleWMActivate(window, wparam, lparam, &activation.record, 0);
    return 0;
}

LRESULT on_activation_request(HWND window, UINT, WPARAM, LPARAM) {
    if (GetActiveWindow() != window) {
        activation.record.fReserved = k_pending;
    }
    return 0;
}
