#include "shell/dialogs/dialogs.h"

#include "shell/main_window.h"

#include <aygshell.h>

namespace {

// Loaded resources stay as long as the program does.
const DLGTEMPLATE *find_template(const wchar_t *name) {
    HRSRC resource = FindResourceW(program_instance(), name, RT_DIALOG);
    return resource == nullptr
               ? nullptr
               : static_cast<const DLGTEMPLATE *>(LoadResource(program_instance(), resource));
}

}  // namespace

INT_PTR run_dialog(const wchar_t *name, DLGPROC procedure) {
    const DLGTEMPLATE *box = find_template(name);
    return box == nullptr
               ? -1
               : DialogBoxIndirectParamW(program_instance(), box, main_window(), procedure, 0);
}

HWND open_modeless(const wchar_t *name, DLGPROC procedure) {
    const DLGTEMPLATE *box = find_template(name);
    return box == nullptr
               ? nullptr
               : CreateDialogIndirectParamW(program_instance(), box, main_window(), procedure, 0);
}

void init_dialog(HWND dialog, DWORD flags) {
    SHINITDLGINFO info = {};
    info.dwMask = SHIDIM_FLAGS;
    info.hDlg = dialog;
    info.dwFlags = flags;
    SHInitDialog(&info);
}
