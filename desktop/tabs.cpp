#include "desktop/tabs.h"

#include <commctrl.h>

static struct Tabs {
    WNDPROC control;  // the control's own window procedure
} tabs;

namespace {

constexpr int k_below = 2;  // pixels between the tabs and the control's lower edge

void fill(HDC context, RECT rect, int colour) {
    FillRect(context, &rect, GetSysColorBrush(colour));
}

// Neighbours share the line between them.
RECT place_of(HWND window, int index) {
    RECT rect = {};
    RECT client;
    SendMessageW(window, TCM_GETITEMRECT, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&rect));
    GetClientRect(window, &client);
    return {rect.left, 0, rect.right + 1, client.bottom - k_below};
}

void draw_label(HWND window, HDC context, RECT rect, int index) {
    wchar_t text[32] = L"";
    TCITEMW item = {};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = 32;
    SendMessageW(window, TCM_GETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    DrawTextW(context, text, -1, &rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

// The shown pane's tab has the colour of the pane and no line between the two.
void draw_tab(HWND window, HDC context, int index, bool shown) {
    const RECT rect = place_of(window, index);
    FrameRect(context, &rect, GetSysColorBrush(COLOR_3DSHADOW));
    fill(context, {rect.left + 1, shown ? 0 : 1, rect.right - 1, rect.bottom - 1},
         shown ? COLOR_WINDOW : COLOR_BTNFACE);
    draw_label(window, context, rect, index);
}

void draw(HWND window, HDC context) {
    RECT client;
    GetClientRect(window, &client);
    fill(context, client, COLOR_BTNFACE);
    fill(context, {0, 0, client.right, 1}, COLOR_3DSHADOW);
    HGDIOBJ previous =
        SelectObject(context, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(COLOR_BTNTEXT));
    const int shown = static_cast<int>(SendMessageW(window, TCM_GETCURSEL, 0, 0));
    const int count = static_cast<int>(SendMessageW(window, TCM_GETITEMCOUNT, 0, 0));
    for (int index = 0; index < count; ++index) {
        draw_tab(window, context, index, index == shown);
    }
    SelectObject(context, previous);
}

LRESULT CALLBACK tabs_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    PAINTSTRUCT paint;
    switch (message) {
    case WM_PAINT:
        draw(window, BeginPaint(window, &paint));
        EndPaint(window, &paint);
        return 0;
    case WM_PRINTCLIENT:
        draw(window, reinterpret_cast<HDC>(wparam));
        return 0;
    case WM_ERASEBKGND:
        return TRUE;
    default:
        return CallWindowProcW(tabs.control, window, message, wparam, lparam);
    }
}

}  // namespace

void tabs_hook(HWND window) {
    tabs.control = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(tabs_proc)));
}
