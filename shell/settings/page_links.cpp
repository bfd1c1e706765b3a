// What links look like, and what a double click on other words does.
#include "shell/settings/page.h"

#include "resources/resource.h"
#include "shell/base/fonts.h"
#include "shell/panes/styles.h"

static struct LinksPage {
    HFONT sample_font;  // kept for the next time
} links_page;

namespace {

const SettingRow k_choices[] = {
    {CTL_LINKS_RED, k_option_link_colour, k_link_red},
    {CTL_LINKS_GREEN, k_option_link_colour, k_link_green},
    {CTL_LINKS_BLUE, k_option_link_colour, k_link_blue},
    {CTL_LINKS_BLACK, k_option_link_colour, k_link_black},
};

const SettingRow k_checks[] = {
    {CTL_LINKS_CREATE, k_option_dclick_create},
    {CTL_LINKS_ASK, k_option_dclick_ask},
};

// The samples stand in the order of the colours.
constexpr int k_first_sample = CTL_LINKS_SAMPLE_RED;
constexpr int k_last_sample = CTL_LINKS_SAMPLE_BLACK;

void prepare(HWND page) {
    if (links_page.sample_font == nullptr) {
        links_page.sample_font = make_font(L"Tahoma", 80, true, true);
    }
    for (int sample = k_first_sample; sample <= k_last_sample; ++sample) {
        SendDlgItemMessageW(page, sample, WM_SETFONT,
                            reinterpret_cast<WPARAM>(links_page.sample_font), FALSE);
    }
}

// Where nothing is painted below a control, as on the handheld, a sample has to be filled with what
// the page itself is.
INT_PTR handle(HWND page, UINT message, WPARAM wparam, LPARAM lparam) {
    const int control = GetDlgCtrlID(reinterpret_cast<HWND>(lparam));
    if (message != WM_CTLCOLORSTATIC || control < k_first_sample || control > k_last_sample) {
        return FALSE;
    }
    const LRESULT brush = SendMessageW(page, WM_CTLCOLORDLG, wparam, as_lparam(page));
    HDC context = reinterpret_cast<HDC>(wparam);
    SetTextColor(context, link_colour(control - k_first_sample));
    SetBkMode(context, TRANSPARENT);
    return brush;
}

}  // namespace

const SettingsPage k_links_page = {
    .name = L"LINKSPAGE",
    .choices = k_choices,
    .checks = k_checks,
    .restyles = true,
    .prepare = prepare,
    .handle = handle,
};
