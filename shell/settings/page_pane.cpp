// What the text in the panes looks like.
#include "shell/settings/page.h"

#include "resources/resource.h"
#include "shell/base/handles.h"

namespace {

constexpr int32_t k_tenths_of_a_point = 10;

const SettingRow k_checks[] = {
    {CTL_PANE_BOLD, k_option_font_style, k_font_bold},
    {CTL_PANE_ITALIC, k_option_font_style, k_font_italic},
};

const SettingRow k_texts[] = {
    {CTL_PANE_FONT, k_option_font_name},
};

const SettingRow k_numbers[] = {
    {CTL_PANE_SIZE, k_option_font_size, k_tenths_of_a_point},
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
    .restyles = true,
    .prepare = prepare,
};
