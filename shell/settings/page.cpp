#include "shell/settings/page.h"

#include "core/host_messages.h"
#include "platform/windows/text_conversion.h"
#include "shell/base/handles.h"
#include "shell/settings/settings.h"
#include "web/changed.h"

// Longer entries are refused, not cut, so that controls take more than any field holds.
constexpr uint32_t k_entry_max = 1000;

static struct SettingsPages {
    wchar_t entry[k_entry_max + 1];  // what a control holds
    wchar_t shown[k_entry_max + 1];  // what it was filled with
    char text[3 * k_entry_max + 1];  // the entry as an option takes it
} pages;

namespace {

// Leaves the text as a control shows it in pages.shown. Edit fields want CR LF for a line feed.
void make_shown(const char *text) {
    utf16_copy(pages.entry, k_entry_max / 2, text);
    wchar_t *to = pages.shown;
    for (const wchar_t *from = pages.entry; *from != 0; ++from) {
        if (*from == '\n' && (from == pages.entry || from[-1] != '\r')) {
            *to++ = '\r';
        }
        *to++ = *from;
    }
    *to = 0;
}

void drop_carriage_returns(wchar_t *text) {
    wchar_t *to = text;
    for (; *text != 0; ++text) {
        if (*text != '\r') {
            *to++ = *text;
        }
    }
    *to = 0;
}

bool is_combo_box(HWND control) {
    wchar_t kind[16] = {};
    GetClassNameW(control, kind, 16);
    return lstrcmpiW(kind, L"COMBOBOX") == 0;
}

// A list gets an entry for a value that it lacks.
void select_entry(HWND list, const wchar_t *text) {
    constexpr WPARAM k_from_start = static_cast<WPARAM>(-1);
    LRESULT entry = SendMessageW(list, CB_FINDSTRINGEXACT, k_from_start, as_lparam(text));
    if (entry == CB_ERR && *text != 0) {
        entry = SendMessageW(list, CB_ADDSTRING, 0, as_lparam(text));
    }
    SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
}

void fill_text(HWND control, const char *text) {
    make_shown(text);
    if (is_combo_box(control)) {
        select_entry(control, pages.shown);
        return;
    }
    SendMessageW(control, EM_LIMITTEXT, k_entry_max, 0);
    SetWindowTextW(control, pages.shown);
}

bool take_text(HWND control, const SettingRow *row, const wchar_t *forbidden, OptionRecord *draft) {
    make_shown(option_string(draft, row->option));
    GetWindowTextW(control, pages.entry, k_entry_max + 1);
    if (wcscmp(pages.entry, pages.shown) == 0) {
        return true;
    }
    drop_carriage_returns(pages.entry);
    const uint32_t capacity = static_cast<uint32_t>(option_info(row->option)->most);
    if (!text_allowed(pages.entry, capacity, forbidden)) {
        return false;
    }
    utf8_copy(pages.text, sizeof pages.text, pages.entry);
    option_put(draft, row->option, pages.text);
    return true;
}

int32_t shown_number(const OptionRecord *draft, const SettingRow *row) {
    return (option_integer(draft, row->option) + row->value / 2) / row->value;
}

bool take_number(HWND control, const SettingRow *row, OptionRecord *draft) {
    const OptionInfo *info = option_info(row->option);
    int32_t number;
    GetWindowTextW(control, pages.entry, k_entry_max + 1);
    if (!number_allowed(pages.entry, info->least / row->value, info->most / row->value, &number)) {
        return false;
    }
    if (number != shown_number(draft, row)) {
        option_put(draft, row->option, number * row->value);
    }
    return true;
}

bool is_checked(HWND window, int control) {
    return SendDlgItemMessageW(window, control, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void check(HWND window, int control, bool on) {
    SendDlgItemMessageW(window, control, BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0);
}

bool is_chosen(const SettingsPage *page, int control, const OptionRecord *draft) {
    for (const SettingRow &row : page->choices) {
        if (row.control == control && option_integer(draft, row.option) == row.value) {
            return true;
        }
    }
    return false;
}

void take_buttons(const SettingsPage *page, HWND window, OptionRecord *draft) {
    for (const SettingRow &row : page->choices) {
        if (is_checked(window, row.control) && !is_chosen(page, row.control, draft)) {
            option_put(draft, row.option, row.value);
        }
    }
    for (const SettingRow &row : page->checks) {
        const int32_t others = option_integer(draft, row.option) & ~row.value;
        const int32_t bits = is_checked(window, row.control) ? row.value : 0;
        option_put(draft, row.option, others | bits);
    }
}

bool apply_rows(std::span<const SettingRow> rows, const OptionRecord *draft) {
    bool changed = false;
    for (const SettingRow &row : rows) {
        if (option_take(row.option, draft)) {
            changed = true;
            if (row.option < k_saved_option_count) {
                set_web_changed(true);
            }
        }
    }
    return changed;
}

}  // namespace

void page_fill(const SettingsPage *page, HWND window, const OptionRecord *draft) {
    for (const SettingRow &row : page->choices) {
        check(window, row.control, is_chosen(page, row.control, draft));
    }
    for (const SettingRow &row : page->checks) {
        check(window, row.control, (option_integer(draft, row.option) & row.value) != 0);
    }
    for (const SettingRow &row : page->texts) {
        fill_text(GetDlgItem(window, row.control), option_string(draft, row.option));
    }
    for (const SettingRow &row : page->numbers) {
        wchar_t digits[16];
        static_assert(sizeof L"-2147483648" <= sizeof digits);
        wsprintfW(digits, L"%d", shown_number(draft, &row));
        SetDlgItemTextW(window, row.control, digits);
    }
}

const SettingRow *page_take(const SettingsPage *page, HWND window, OptionRecord *draft) {
    take_buttons(page, window, draft);
    for (const SettingRow &row : page->texts) {
        if (!take_text(GetDlgItem(window, row.control), &row, page->forbidden, draft)) {
            return &row;
        }
    }
    for (const SettingRow &row : page->numbers) {
        if (!take_number(GetDlgItem(window, row.control), &row, draft)) {
            return &row;
        }
    }
    return nullptr;
}

// The string has a place for a text's capacity, or two for a number's limits.
void page_refuse(HWND owner, HWND window, const SettingRow *row) {
    const OptionInfo *info = option_info(row->option);
    const int32_t most = info->most / row->value;
    const int32_t first = info->type == OptionType::text ? most : info->least / row->value;
    LoadStringW(program_instance(), static_cast<UINT>(row->control), pages.entry, k_entry_max);
    wsprintfW(pages.shown, pages.entry, first, most);
    MessageBoxW(owner, pages.shown, to_utf16(k_product_name), MB_OK | MB_ICONEXCLAMATION);
    SetFocus(GetDlgItem(window, row->control));
    SendDlgItemMessageW(window, row->control, EM_SETSEL, 0, -1);
}

bool page_apply(const SettingsPage *page, const OptionRecord *draft) {
    bool changed = false;
    for (const std::span<const SettingRow> rows :
         {page->choices, page->checks, page->texts, page->numbers}) {
        changed |= apply_rows(rows, draft);
    }
    return changed;
}
