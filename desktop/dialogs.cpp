#include "desktop/size.h"

#include <algorithm>

#include <aygshell.h>

namespace {

// Dialog units.
constexpr int k_margin = 7;
constexpr int k_gap = 6;
constexpr int k_button_width = 50;
constexpr int k_button_height = 14;

constexpr long k_narrowest = 240;  // pixels: the handheld's screen

struct Layout {
    HWND lowest_button;  // the push button furthest down, or null
    RECT button;         // its place
    long bottom;         // where the lowest control ends
};

RECT place_in(HWND dialog, HWND control) {
    RECT rect;
    GetWindowRect(control, &rect);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT *>(&rect), 2);
    return rect;
}

// Combo boxes count with the field alone, which is what their window is while the list is closed.
Layout measure(HWND dialog) {
    Layout layout = {};
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        const RECT rect = place_in(dialog, control);
        layout.bottom = std::max(layout.bottom, rect.bottom);
        const LRESULT code = SendMessageW(control, WM_GETDLGCODE, 0, 0);
        if ((code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0 &&
            (layout.lowest_button == nullptr || rect.bottom > layout.button.bottom)) {
            layout.lowest_button = control;
            layout.button = rect;
        }
    }
    return layout;
}

bool is_free(HWND dialog, const RECT &place) {
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        const RECT rect = place_in(dialog, control);
        RECT common;
        if (IntersectRect(&common, &rect, &place) != 0) {
            return false;
        }
    }
    return place.left >= 0;
}

RECT in_pixels(HWND dialog, RECT units) {
    MapDialogRect(dialog, &units);
    return units;
}

// Makes the dialog taller by a row and returns the place at its right end.
RECT add_row(HWND dialog, const Layout &layout) {
    const RECT size = in_pixels(dialog, {k_margin, k_margin, k_button_width, k_button_height});
    RECT client;
    GetClientRect(dialog, &client);
    const RECT place = {client.right - size.left - size.right, layout.bottom + size.top,
                        client.right - size.left, layout.bottom + size.top + size.bottom};
    const long growth = place.bottom + size.top - client.bottom;
    if (growth > 0) {
        RECT window;
        GetWindowRect(dialog, &window);
        SetWindowPos(dialog, nullptr, 0, 0, window.right - window.left,
                     window.bottom - window.top + growth,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    return place;
}

// The button stands left of the lowest push button where there is room, otherwise below everything,
// and comes before that button in the order of the Tab key.
void add_ok_button(HWND dialog) {
    const Layout layout = measure(dialog);
    const long gap = in_pixels(dialog, {k_gap, 0, 0, 0}).left;
    RECT place = layout.button;
    OffsetRect(&place, -(place.right - place.left) - gap, 0);
    HWND before = layout.lowest_button;
    if (before == nullptr || !is_free(dialog, place)) {
        place = add_row(dialog, layout);
        before = nullptr;
    }
    HWND button =
        CreateWindowExW(0, L"BUTTON", L"OK", WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON,
                        place.left, place.top, place.right - place.left, place.bottom - place.top,
                        dialog, reinterpret_cast<HMENU>(IDOK), nullptr, nullptr);
    SendMessageW(button, WM_SETFONT, static_cast<WPARAM>(SendMessageW(dialog, WM_GETFONT, 0, 0)),
                 FALSE);
    HWND after = before != nullptr ? GetWindow(before, GW_HWNDPREV) : nullptr;
    SetWindowPos(button, before != nullptr ? (after != nullptr ? after : HWND_TOP) : HWND_BOTTOM, 0,
                 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SendMessageW(dialog, DM_SETDEFID, IDOK, 0);
}

// A dialog with a default button of its own (a cancel box) is not to be ended by another.
bool lacks_ok_button(HWND dialog) {
    const LRESULT answer = SendMessageW(dialog, DM_GETDEFID, 0, 0);
    return GetDlgItem(dialog, IDOK) == nullptr &&
           (HIWORD(answer) != DC_HASDEFID || GetDlgItem(dialog, LOWORD(answer)) == nullptr);
}

// Over the middle of the owner's client area, all of it on the screen.
void centre(HWND dialog) {
    HWND owner = GetWindow(dialog, GW_OWNER);
    const RECT free_area = free_area_around(owner != nullptr ? owner : dialog);
    RECT around = free_area;
    if (owner != nullptr && IsWindowVisible(owner) != 0 && IsIconic(owner) == 0) {
        GetClientRect(owner, &around);
        MapWindowPoints(owner, nullptr, reinterpret_cast<POINT *>(&around), 2);
    }
    RECT rect;
    GetWindowRect(dialog, &rect);
    const long width = rect.right - rect.left;
    const long height = rect.bottom - rect.top;
    const long left = (around.left + around.right - width) / 2;
    const long top = (around.top + around.bottom - height) / 2;
    SetWindowPos(dialog, nullptr, std::max(free_area.left, std::min(left, free_area.right - width)),
                 std::max(free_area.top, std::min(top, free_area.bottom - height)), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void resize_by(HWND window, long growth) {
    RECT rect;
    GetWindowRect(window, &rect);
    SetWindowPos(window, nullptr, 0, 0, rect.right - rect.left + growth, rect.bottom - rect.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void move_by(HWND dialog, HWND control, long way) {
    const RECT rect = place_in(dialog, control);
    SetWindowPos(control, nullptr, rect.left + way, rect.top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// The system has a least width for property sheets, which is wider than the handheld's screen.
// Where the sheet is wider than its owner its tabs give the rest back; pages take their room from
// them.
void narrow_sheet(HWND sheet) {
    HWND tabs = reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETTABCONTROL, 0, 0));
    HWND owner = GetWindow(sheet, GW_OWNER);
    if (tabs == nullptr || owner == nullptr) {
        return;
    }
    RECT room;
    RECT rect;
    GetClientRect(owner, &room);
    GetWindowRect(sheet, &rect);
    const long excess = rect.right - rect.left - std::max(room.right, k_narrowest);
    if (excess <= 0) {
        return;
    }
    HWND page = reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
    for (HWND child = GetWindow(sheet, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        if (child == tabs || child == page) {
            resize_by(child, -excess);
        } else {
            move_by(sheet, child, -excess);
        }
    }
    resize_by(sheet, -excess);
}

}  // namespace

BOOL WINAPI SHInitDialog(SHINITDLGINFO *info) {
    if (info == nullptr || (info->dwMask & SHIDIM_FLAGS) == 0 || IsWindow(info->hDlg) == 0) {
        return FALSE;
    }
    HWND dialog = info->hDlg;
    if ((GetWindowLongW(dialog, GWL_STYLE) & WS_CHILD) != 0) {
        return TRUE;
    }
    if (GetWindowTextLengthW(dialog) == 0) {
        SetWindowTextW(dialog, L"Quorvane");
    }
    if ((info->dwFlags & SHIDIF_DONEBUTTON) != 0 && lacks_ok_button(dialog)) {
        add_ok_button(dialog);
    }
    if ((info->dwFlags & (SHIDIF_SIZEDLG | SHIDIF_SIZEDLGFULLSCREEN)) != 0) {
        narrow_sheet(dialog);
        centre(dialog);
    }
    return TRUE;
}
