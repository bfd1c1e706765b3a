// What reports are about and what they look like.
#include "shell/settings/page.h"

#include "resources/resource.h"

static struct ReportPage {
    WNDPROC format_previous;  // the edit field's own window procedure
} report_page;

namespace {

const SettingRow k_choices[] = {
    {CTL_REPORT_FORMATTED, k_option_rtype, k_report_fmt},
    {CTL_REPORT_IN_POINTERS, k_option_rtype, k_report_inptr},
    {CTL_REPORT_OUT_POINTERS, k_option_rtype, k_report_outptr},
    {CTL_REPORT_TRAIL, k_option_rtype, k_report_trail},
};

const SettingRow k_checks[] = {
    {CTL_REPORT_ALL, k_option_rall},
};

const SettingRow k_texts[] = {
    {CTL_REPORT_FORMAT, k_option_rfmt},
};

// A field of several lines keeps Enter and Escape to itself; here they close the sheet.
LRESULT CALLBACK format_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const LRESULT result =
        CallWindowProcW(report_page.format_previous, window, message, wparam, lparam);
    return message == WM_GETDLGCODE ? result & ~DLGC_WANTALLKEYS : result;
}

void prepare(HWND page) {
    report_page.format_previous = subclass_window(GetDlgItem(page, CTL_REPORT_FORMAT), format_proc);
}

}  // namespace

const SettingsPage k_report_page = {
    .name = L"REPORTPAGE",
    .choices = k_choices,
    .checks = k_checks,
    .texts = k_texts,
    .prepare = prepare,
};
