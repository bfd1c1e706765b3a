// The zoom factors, and the dialog that chooses one.
#include "shell/dialogs/dialogs.h"

#include "resources/resource.h"
#include "web/options.h"

namespace {

struct ZoomFactor {
    const wchar_t *text;
    int32_t zoom;     // set by this entry
    int32_t highest;  // shown as this entry, down to the highest of the one before
};

constexpr ZoomFactor k_factors[] = {
    {L"42%", -4, -4}, {L"70%", -2, -2},  {L"100%", 0, 1},   {L"127%", 4, 4},   {L"165%", 6, 6},
    {L"180%", 8, 8},  {L"220%", 10, 10}, {L"275%", 16, 16}, {L"330%", 20, 20},
};
constexpr int k_factor_count = sizeof k_factors / sizeof k_factors[0];

// The option keeps the zoom within the range of the table.
int entry_of(int32_t zoom) {
    int entry = 0;
    while (zoom > k_factors[entry].highest) {
        ++entry;
    }
    return entry;
}

int32_t zoom_of(LRESULT entry) {
    return entry >= 0 && entry < k_factor_count ? k_factors[entry].zoom : 0;
}

void start(HWND dialog) {
    init_dialog(dialog, k_dialog_full_screen);
    for (const ZoomFactor &factor : k_factors) {
        SendDlgItemMessageW(dialog, CTL_ZOOM_FACTOR, CB_ADDSTRING, 0, as_lparam(factor.text));
    }
    SendDlgItemMessageW(dialog, CTL_ZOOM_FACTOR, CB_SETCURSEL,
                        static_cast<WPARAM>(entry_of(option_zoom())), 0);
}

INT_PTR CALLBACK zoom_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        start(dialog);
        return TRUE;
    case WM_COMMAND:
        switch (LOWORD(wparam)) {
        case IDOK:
            set_option_zoom(
                zoom_of(SendDlgItemMessageW(dialog, CTL_ZOOM_FACTOR, CB_GETCURSEL, 0, 0)));
            EndDialog(dialog, 1);
            return TRUE;
        case IDCANCEL:
            EndDialog(dialog, 0);
            return TRUE;
        default:
            return FALSE;
        }
    default:
        return FALSE;
    }
}

}  // namespace

bool open_zoom_dialog() {
    return run_dialog(L"FONTBOX", zoom_proc) == 1;
}
