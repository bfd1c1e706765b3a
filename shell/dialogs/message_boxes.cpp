// The boxes that ask and warn, all owned by the main window.
#include "core/host_messages.h"

#include "platform/windows/text_conversion.h"
#include "shell/main_window.h"
#include "shell/platform.h"

static struct MessageBoxes {
    wchar_t caption[k_conversion_units + 1];
    wchar_t text[2 * k_conversion_units];  // a question may hold a whole path
} boxes;

namespace {

int show_box(const char *text, const char *caption, UINT flags) {
    utf16_copy(boxes.caption, k_conversion_units + 1, caption);
    utf16_copy(boxes.text, 2 * k_conversion_units, text);
    return MessageBoxW(main_window(), boxes.text, boxes.caption, flags);
}

}  // namespace

void show_warning(const char *text, const char *caption) {
    show_box(text, caption, MB_OK | MB_ICONEXCLAMATION);
}

bool ask_ok_cancel(const char *text, const char *caption) {
    return show_box(text, caption, MB_OKCANCEL | MB_ICONQUESTION) == IDOK;
}

bool ask_yes_no(const char *text, const char *caption) {
    return show_box(text, caption, MB_YESNO | MB_ICONQUESTION) == IDYES;
}

bool ask_no_yes(const char *text, const char *caption) {
    return show_box(text, caption, MB_YESNO | MB_DEFBUTTON2 | MB_ICONQUESTION) == IDYES;
}

bool ask_save_changes(const char *text, const char *caption) {
    return show_box(text, caption, MB_YESNOCANCEL | MB_ICONQUESTION) == IDYES;
}
