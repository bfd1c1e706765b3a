// What the text in the panes looks like.
#include "shell/settings/page.h"

#include "resources/resource.h"
#include "shell/main_window.h"

namespace {

const CheckRow k_checks[] = {
    {CTL_PANE_BOLD, offsetof(Settings, bold)},
    {CTL_PANE_ITALIC, offsetof(Settings, italic)},
};

const TextRow k_texts[] = {
    {CTL_PANE_FONT, offsetof(Settings, font_name), k_font_name_max, L"",
     L"The font is one of those in the list."},
};

const NumberRow k_numbers[] = {
    {CTL_PANE_SIZE, offsetof(Settings, points), k_points_min, k_points_max,
     L"The size is a whole number of points from 4 to 72."},
};

const wchar_t *const k_usual_sizes[] = {L"7",  L"8",  L"9",  L"10", L"11",
                                        L"12", L"14", L"16", L"18", L"24"};

void add_entry(HWND list, const wchar_t *text) {
    if (SendMessageW(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), as_lparam(text)) ==
        CB_ERR) {
        SendMessageW(list, CB_ADDSTRING, 0, as_lparam(text));
    }
}

// Names with '@' are fonts turned for vertical writing.
int CALLBACK add_font(const LOGFONTW *font, const TEXTMETRICW *, DWORD, LPARAM list) {
    if (font->lfFaceName[0] != '@') {
        add_entry(reinterpret_cast<HWND>(list), font->lfFaceName);
    }
    return TRUE;
}

void prepare(HWND page) {
    HWND fonts = GetDlgItem(page, CTL_PANE_FONT);
    HDC context = GetDC(page);
    EnumFontFamiliesW(context, nullptr, add_font, reinterpret_cast<LPARAM>(fonts));
    ReleaseDC(page, context);
    for (const wchar_t *size : k_usual_sizes) {
        add_entry(GetDlgItem(page, CTL_PANE_SIZE), size);
    }
}

}  // namespace

const SettingsPage k_pane_page = {
    .name = L"PANEPAGE",
    .checks = k_checks,
    .texts = k_texts,
    .numbers = k_numbers,
    .prepare = prepare,
};
