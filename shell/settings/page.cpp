#include "shell/settings/page.h"

#include "core/host_messages.h"
#include "platform/windows/text_conversion.h"

// Longer entries are refused, not cut, so that controls take more than any field holds.
constexpr uint32_t k_entry_max = 1000;

static struct SettingsPages {
    wchar_t entry[k_entry_max + 1];  // what a control holds
    wchar_t shown[k_entry_max + 1];  // what it was filled with
} pages;

namespace {

template <typename T> T *at(Settings *draft, size_t field) {
    return reinterpret_cast<T *>(reinterpret_cast<char *>(draft) + field);
}

template <typename T> const T *at(const Settings *draft, size_t field) {
    return reinterpret_cast<const T *>(reinterpret_cast<const char *>(draft) + field);
}

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

bool take_text(HWND control, const TextRow &row, Settings *draft) {
    char *field = at<char>(draft, row.field);
    make_shown(field);
    GetWindowTextW(control, pages.entry, k_entry_max + 1);
    if (wcscmp(pages.entry, pages.shown) == 0) {
        return true;
    }
    drop_carriage_returns(pages.entry);
    if (!text_allowed(pages.entry, row.capacity, row.forbidden)) {
        return false;
    }
    utf8_copy(field, row.capacity + 1, pages.entry);
    return true;
}

bool take_number(HWND control, const NumberRow &row, Settings *draft) {
    GetWindowTextW(control, pages.entry, k_entry_max + 1);
    return number_allowed(pages.entry, row.least, row.most, at<int32_t>(draft, row.field));
}

bool is_checked(HWND window, int control) {
    return SendDlgItemMessageW(window, control, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void check(HWND window, int control, bool on) {
    SendDlgItemMessageW(window, control, BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0);
}

}  // namespace

void page_fill(const SettingsPage *page, HWND window, const Settings *draft) {
    for (const ChoiceRow &row : page->choices) {
        check(window, row.control, *at<uint8_t>(draft, row.field) == row.value);
    }
    for (const CheckRow &row : page->checks) {
        check(window, row.control, *at<uint8_t>(draft, row.field) != 0);
    }
    for (const TextRow &row : page->texts) {
        fill_text(GetDlgItem(window, row.control), at<char>(draft, row.field));
    }
    for (const NumberRow &row : page->numbers) {
        wchar_t digits[16];
        wsprintfW(digits, L"%d", *at<int32_t>(draft, row.field));
        SetDlgItemTextW(window, row.control, digits);
    }
}

bool page_take(const SettingsPage *page, HWND window, Settings *draft, Refusal *refusal) {
    for (const ChoiceRow &row : page->choices) {
        if (is_checked(window, row.control)) {
            *at<uint8_t>(draft, row.field) = row.value;
        }
    }
    for (const CheckRow &row : page->checks) {
        *at<uint8_t>(draft, row.field) = is_checked(window, row.control) ? 1 : 0;
    }
    for (const TextRow &row : page->texts) {
        if (!take_text(GetDlgItem(window, row.control), row, draft)) {
            *refusal = {row.control, row.allowed};
            return false;
        }
    }
    for (const NumberRow &row : page->numbers) {
        if (!take_number(GetDlgItem(window, row.control), row, draft)) {
            *refusal = {row.control, row.allowed};
            return false;
        }
    }
    return true;
}

void page_refuse(HWND owner, HWND window, const Refusal *refusal) {
    MessageBoxW(owner, refusal->allowed, to_utf16(k_product_name), MB_OK | MB_ICONEXCLAMATION);
    SetFocus(GetDlgItem(window, refusal->control));
    SendDlgItemMessageW(window, refusal->control, EM_SETSEL, 0, -1);
}
