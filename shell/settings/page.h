// A page of the settings sheet as data: which control stands for which option. Defaults and limits
// are the option's own (web/options.def), and a string of the resources with the control's number
// tells what may be entered.
//
// Pages edit a draft, a copy of the options, which is brought into force as a whole. A page fills
// its controls when it is first shown and takes them back whenever it is left. What still stands as
// it was shown keeps its value to the last bit, whether that can be shown or not.
#pragma once

#include "shell/base/platform.h"
#include "web/options.h"

#include <span>

struct SettingRow {
    int control;
    OptionId option;
    // A radio button's value, and one button may have several; a check box's bit; the unit in which
    // a number is entered.
    int32_t value = 1;
};

struct SettingsPage {
    const wchar_t *name;  // of the template
    std::span<const SettingRow> choices = {};
    std::span<const SettingRow> checks = {};
    std::span<const SettingRow> texts = {};
    std::span<const SettingRow> numbers = {};
    const wchar_t *forbidden = L"";  // characters in its texts
    bool restyles = false;           // the panes look different when its options change
    // Prepares what the tables do not cover; may be null.
    void (*prepare)(HWND page) = nullptr;
    // Answers a message that the tables do not cover; may be null.
    INT_PTR (*handle)(HWND page, UINT message, WPARAM wparam, LPARAM lparam) = nullptr;
};

void page_fill(const SettingsPage *page, HWND window, const OptionRecord *draft);

// Takes the controls into the draft. Returns null, or the first row whose entry is not allowed; the
// draft then keeps what it had for it and for what follows it.
const SettingRow *page_take(const SettingsPage *page, HWND window, OptionRecord *draft);

// Tells the user what the entry may be, in a box over `owner`, and goes to it.
void page_refuse(HWND owner, HWND window, const SettingRow *row);

// Sets the page's options that differ from the draft, and the web changed flag when one of them is
// kept in the web file. True when any differed.
bool page_apply(const SettingsPage *page, const OptionRecord *draft);

// The pages in the order of their tabs.
extern const SettingsPage k_report_page;
extern const SettingsPage k_output_page;
extern const SettingsPage k_links_page;
extern const SettingsPage k_numbers_page;
extern const SettingsPage k_pane_page;
extern const SettingsPage k_search_page;
