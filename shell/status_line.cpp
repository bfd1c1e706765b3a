#include "shell/status_line.h"

#include "core/host_messages.h"
#include "platform/windows/text_conversion.h"
#include "resources/resource.h"

#include <cstring>

static struct StatusLine {
    HWND window;
    char resting[k_status_max + 1];
    char transient[k_status_max + 1];
    DWORD shown_at;  // tick at which the transient text appeared; 0: none is up
} status;

namespace {

void show(const char *text) {
    SetWindowTextW(status.window, to_utf16(text));
    UpdateWindow(status.window);
}

void keep(char *to, const char *text) {
    memset(to, 0, k_status_max + 1);
    copy_characters(to, text, k_status_max);
}

}  // namespace

void status_line_create(HWND parent) {
    memset(&status, 0, sizeof status);
    status.window = CreateStatusWindowW(
        static_cast<LONG>(WS_CHILD | WS_VISIBLE | CCS_NORESIZE | CCS_NOPARENTALIGN), L"", parent,
        CTL_STATUS_LINE);
}

HWND status_line() {
    return status.window;
}

void show_status_message(const char *text) {
    const DWORD now = GetTickCount();
    status.shown_at = now != 0 ? now : 1;
    keep(status.transient, text);
    show(status.transient);
    MessageBeep(0);
}

void set_resting_status(const char *text) {
    keep(status.resting, text);
    if (status.shown_at == 0) {
        show(status.resting);
    }
}

void status_timeout_check() {
    if (status.shown_at != 0 && GetTickCount() - status.shown_at > k_status_milliseconds) {
        status.shown_at = 0;
        show(status.resting);
    }
}
