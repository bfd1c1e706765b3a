// The system's dialogs for choosing a web file.
#include "core/host_files.h"
#include "core/host_messages.h"

#include "core/errors.h"
#include "platform/windows/text_conversion.h"
#include "shell/base/handles.h"
#include "shell/base/platform.h"

#include <commdlg.h>

static struct FileDialogs {
    wchar_t path[k_conversion_units];
    wchar_t title[k_conversion_units];
} dialogs;

namespace {

constexpr const wchar_t *k_filter = L"Quorvanes (*.QVX)\0*.qvx\0All Files (*.*)\0*.*\0";

// The structure as the oldest system has it. The current directory must stay: output files are
// named relative to it.
OPENFILENAMEW prepare(const char *path) {
    utf16_copy(dialogs.path, k_conversion_units, path);
    OPENFILENAMEW choice = {};
    choice.lStructSize = OPENFILENAME_SIZE_VERSION_400W;
    choice.hwndOwner = main_window();
    choice.lpstrFilter = k_filter;
    choice.nFilterIndex = 1;
    choice.lpstrFile = dialogs.path;
    choice.nMaxFile = k_conversion_units;
    choice.Flags = OFN_NOCHANGEDIR | OFN_HIDEREADONLY;
    return choice;
}

// Part of a path would be another file.
bool take_path(char *path, uint32_t size) {
    if (utf8_size(dialogs.path) >= size) {
        show_error(k_cannot_open_web);
        return false;
    }
    utf8_copy(path, size, dialogs.path);
    return true;
}

}  // namespace

bool ask_open_path(char *path, uint32_t size) {
    OPENFILENAMEW choice = prepare(path);
    return GetOpenFileNameW(&choice) != 0 && take_path(path, size);
}

bool ask_save_path(char *path, uint32_t size, const char *display_name) {
    OPENFILENAMEW choice = prepare(path);
    utf16_copy(dialogs.title, k_conversion_units, display_name);
    choice.lpstrFileTitle = dialogs.title;
    choice.nMaxFileTitle = k_conversion_units;
    choice.lpstrDefExt = L"qvx";
    choice.Flags |= OFN_OVERWRITEPROMPT;
    return GetSaveFileNameW(&choice) != 0 && take_path(path, size);
}

const char *file_read_mode() {
    return "r+b";
}
