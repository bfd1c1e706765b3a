// What reports are about and what they look like.
#include "shell/settings/page.h"

#include "resources/resource.h"

static struct ReportPage {
    WNDPROC format_previous;  // the edit field's own window procedure
} report_page;

namespace {

const ChoiceRow k_choices[] = {
    {CTL_REPORT_FORMATTED, offsetof(Settings, rtype), k_report_fmt},
    {CTL_REPORT_IN_POINTERS, offsetof(Settings, rtype), k_report_inptr},
    {CTL_REPORT_OUT_POINTERS, offsetof(Settings, rtype), k_report_outptr},
    {CTL_REPORT_TRAIL, offsetof(Settings, rtype), k_report_trail},
};

const CheckRow k_checks[] = {
    {CTL_REPORT_ALL, offsetof(Settings, rall)},
};

const TextRow k_texts[] = {
    {CTL_REPORT_FORMAT, offsetof(Settings, rfmt), k_rfmt_max, L"",
     L"A format string has at most 256 characters. Letters with accents count as two or three."},
};

// A field of several lines keeps Enter and Escape to itself; here they close the sheet.
LRESULT CALLBACK format_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    LRESULT result = CallWindowProcW(report_page.format_previous, window, message, wparam, lparam);
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
