// The property sheet that edits the options: everything that the user enters goes into a draft,
// which OK brings into force and Cancel drops.
#include "shell/settings/sheet.h"

#include "shell/base/dialog.h"
#include "shell/base/handles.h"
#include "shell/find/search_bar.h"
#include "shell/panes/scintilla.h"
#include "shell/panes/styles.h"
#include "shell/settings/page.h"

namespace {

constexpr uint32_t k_page_count = 6;

const SettingsPage *const k_pages[k_page_count] = {
    &k_report_page, &k_output_page, &k_links_page, &k_numbers_page, &k_pane_page, &k_search_page,
};

}  // namespace

static struct SettingsSheet {
    OptionRecord draft;
    HPROPSHEETPAGE pages[k_page_count];
    HWND windows[k_page_count];  // of the pages that have been shown
    bool accepted;               // closed with OK
} sheet;

namespace {

// The page that a window shows; k_page_count before it knows.
uint32_t index_of(HWND window) {
    uint32_t index = 0;
    while (index < k_page_count && sheet.windows[index] != window) {
        ++index;
    }
    return index;
}

void open_page(HWND window, uint32_t index) {
    const SettingsPage *page = k_pages[index];
    sheet.windows[index] = window;
    if (page->prepare != nullptr) {
        page->prepare(window);
    }
    page_fill(page, window, &sheet.draft);
}

// The answer to a question of the sheet is kept in the page's window.
INT_PTR answer(HWND window, LONG_PTR value) {
    set_dialog_answer(window, value);
    return TRUE;
}

// A page with an entry that is not allowed can neither be left nor closed with OK.
INT_PTR notified(HWND window, uint32_t index, UINT code) {
    switch (code) {
    case PSN_KILLACTIVE: {
        const SettingRow *refused = page_take(k_pages[index], window, &sheet.draft);
        if (refused != nullptr) {
            page_refuse(GetParent(window), window, refused);
        }
        return answer(window, refused != nullptr ? TRUE : FALSE);
    }
    case PSN_APPLY:
        sheet.accepted = true;
        return answer(window, PSNRET_NOERROR);
    default:
        return FALSE;
    }
}

INT_PTR CALLBACK page_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
        const PROPSHEETPAGEW *page = reinterpret_cast<const PROPSHEETPAGEW *>(lparam);
        open_page(window, static_cast<uint32_t>(page->lParam));
        return TRUE;
    }
    const uint32_t index = index_of(window);
    if (index == k_page_count) {
        return FALSE;
    }
    if (message == WM_NOTIFY) {
        return notified(window, index, reinterpret_cast<const NMHDR *>(lparam)->code);
    }
    const SettingsPage *page = k_pages[index];
    return page->handle != nullptr ? page->handle(window, message, wparam, lparam) : FALSE;
}

int CALLBACK sheet_proc(HWND window, UINT event, LPARAM) {
    if (event == PSCB_INITIALIZED) {
        init_dialog(window, k_dialog_full_screen);
    }
    return 0;
}

// False when the system refuses.
bool run_sheet() {
    for (uint32_t i = 0; i < k_page_count; ++i) {
        PROPSHEETPAGEW page = {};
        page.dwSize = PROPSHEETPAGEW_V1_SIZE;
        page.hInstance = program_instance();
        page.pszTemplate = k_pages[i]->name;
        page.pfnDlgProc = page_proc;
        page.lParam = static_cast<LPARAM>(i);
        sheet.pages[i] = CreatePropertySheetPageW(&page);
    }
    PROPSHEETHEADERW header = {};
    header.dwSize = PROPSHEETHEADERW_V1_SIZE;
    header.dwFlags = PSH_NOAPPLYNOW | PSH_USECALLBACK;
    header.hwndParent = main_window();
    header.hInstance = program_instance();
    header.pszCaption = L"Settings";
    header.nPages = k_page_count;
    header.phpage = sheet.pages;
    header.pfnCallback = sheet_proc;
    return PropertySheetW(&header) >= 0;
}

void bring_into_force() {
    bool restyle = false;
    for (const SettingsPage *page : k_pages) {
        const bool changed = page_apply(page, &sheet.draft);
        restyle = restyle || (changed && page->restyles);
    }
    if (restyle) {
        apply_pane_styles(text_pane());
        apply_pane_styles(console_pane());
    }
    search_bar_show_case();
}

}  // namespace

void open_settings_sheet() {
    sheet = {};
    sheet.draft = *options_in_force();
    if (run_sheet() && sheet.accepted) {
        bring_into_force();
    }
}
