// The window of class "Scintilla": its messages, and its beginning and end.
#include "pane/window.h"

#include "pane/clipboard.h"
#include "pane/draw.h"
#include "pane/edit.h"
#include "pane/input.h"
#include "pane/keys.h"
#include "pane/layout.h"
#include "pane/menu.h"
#include "pane/messages.h"
#include "pane/mouse.h"
#include "pane/notify.h"
#include "pane/pane.h"
#include "pane/selection.h"
#include "pane/styles.h"
#include "pane/utf16.h"
#include "pane/view.h"

#include <Scintilla.h>
#include <cstdlib>

namespace {

constexpr wchar_t k_class[] = L"Scintilla";
constexpr int k_first_margin = 16;  // pixels, of the second margin
constexpr COLORREF k_first_inactive = RGB(192, 192, 192);

POINT point_of(LPARAM lparam) {
    return {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
}

// ---- Beginning and end --------------------------------------------------------------------------

void set_defaults(Pane *pane) {
    pane->notify_mask = 0xFFFFFFFF;
    pane->inactive_back = k_first_inactive;
    pane->view.margins[1] = k_first_margin;
    pane->view.end_at_last_line = true;
    pane->view.policy = {CARET_EVEN, 0};
    layout_init(&pane->layout);
    styles_init(&pane->look);
}

LRESULT on_create(HWND window) {
    Pane *pane = static_cast<Pane *>(calloc(1, sizeof(Pane)));
    if (pane == nullptr || !document_init(&pane->document, {pane, edit_changed, edit_save_point})) {
        free(pane);
        return -1;
    }
    pane->window = window;
    set_defaults(pane);
    SetWindowLongPtrW(window, 0, reinterpret_cast<LONG_PTR>(pane));
    RECT client = {};
    GetClientRect(window, &client);
    view_on_size(pane, static_cast<int>(client.right), static_cast<int>(client.bottom));
    return 0;
}

void destroy(Pane *pane) {
    SetWindowLongPtrW(pane->window, 0, 0);
    view_drop_caret(pane);
    document_free(&pane->document);
    layout_free(&pane->layout);
    styles_free(&pane->look);
    free(pane);
}

// ---- Messages of the system ---------------------------------------------------------------------

LRESULT on_destroy(Pane *pane, WPARAM, LPARAM) {
    destroy(pane);
    return 0;
}

LRESULT on_paint(Pane *pane, WPARAM, LPARAM) {
    draw_pane(pane);
    return 0;
}

LRESULT on_erase(Pane *, WPARAM, LPARAM) {
    return 1;  // every line is drawn to its borders
}

LRESULT on_size(Pane *pane, WPARAM, LPARAM lparam) {
    view_on_size(pane, LOWORD(lparam), HIWORD(lparam));
    return 0;
}

LRESULT on_set_focus(Pane *pane, WPARAM, LPARAM) {
    pane->focused = true;
    InvalidateRect(pane->window, nullptr, FALSE);
    layout_prepare(pane);
    view_make_caret(pane);
    notify_command(pane, SCEN_SETFOCUS);
    return 0;
}

LRESULT on_kill_focus(Pane *pane, WPARAM, LPARAM) {
    pane->focused = false;
    InvalidateRect(pane->window, nullptr, FALSE);
    view_drop_caret(pane);
    notify_command(pane, SCEN_KILLFOCUS);
    return 0;
}

LRESULT on_character(Pane *pane, WPARAM wparam, LPARAM) {
    input_character(pane, static_cast<wchar_t>(wparam));
    return 0;
}

LRESULT on_left_down(Pane *pane, WPARAM, LPARAM lparam) {
    mouse_down(pane, point_of(lparam));
    return 0;
}

LRESULT on_mouse_move(Pane *pane, WPARAM, LPARAM lparam) {
    mouse_moved(pane, point_of(lparam));
    return 0;
}

LRESULT on_left_up(Pane *pane, WPARAM, LPARAM lparam) {
    mouse_up(pane, point_of(lparam));
    return 0;
}

LRESULT on_capture_changed(Pane *pane, WPARAM, LPARAM) {
    mouse_lost(pane);
    return 0;
}

LRESULT on_timer(Pane *pane, WPARAM wparam, LPARAM) {
    mouse_timer(pane, wparam);
    return 0;
}

LRESULT on_context_menu(Pane *pane, WPARAM, LPARAM lparam) {
    menu_open(pane, point_of(lparam));
    return 0;
}

LRESULT on_vertical_bar(Pane *pane, WPARAM wparam, LPARAM) {
    view_on_vertical_bar(pane, LOWORD(wparam));
    return 0;
}

LRESULT on_horizontal_bar(Pane *pane, WPARAM wparam, LPARAM) {
    view_on_horizontal_bar(pane, LOWORD(wparam));
    return 0;
}

// With Ctrl the wheel zooms.
LRESULT on_wheel(Pane *pane, WPARAM wparam, LPARAM) {
    const int turned = static_cast<short>(HIWORD(wparam));
    if ((LOWORD(wparam) & MK_CONTROL) == 0) {
        view_on_wheel(pane, turned);
        return 0;
    }
    LRESULT result = 0;
    handle_message(pane, turned > 0 ? UINT{SCI_ZOOMIN} : UINT{SCI_ZOOMOUT}, 0, 0, &result);
    return result;
}

LRESULT on_dialog_code(Pane *, WPARAM, LPARAM) {
    return DLGC_HASSETSEL | DLGC_WANTALLKEYS;
}

LRESULT on_start_composition(Pane *pane, WPARAM, LPARAM) {
    input_place_composition(pane);
    return DefWindowProcW(pane->window, WM_IME_STARTCOMPOSITION, 0, 0);
}

LRESULT on_composition(Pane *pane, WPARAM wparam, LPARAM lparam) {
    if (input_take_result(pane, lparam)) {
        return 0;
    }
    return DefWindowProcW(pane->window, WM_IME_COMPOSITION, wparam, lparam);
}

LRESULT on_cut(Pane *pane, WPARAM, LPARAM) {
    clipboard_cut(pane);
    return 0;
}

LRESULT on_copy(Pane *pane, WPARAM, LPARAM) {
    clipboard_copy(pane);
    return 0;
}

LRESULT on_paste(Pane *pane, WPARAM, LPARAM) {
    clipboard_paste(pane);
    return 0;
}

LRESULT on_clear(Pane *pane, WPARAM, LPARAM) {
    edit_delete(pane);
    return 0;
}

LRESULT on_undo(Pane *pane, WPARAM, LPARAM) {
    edit_undo(pane);
    return 0;
}

LRESULT on_set_text(Pane *pane, WPARAM, LPARAM lparam) {
    const wchar_t *units = reinterpret_cast<const wchar_t *>(lparam);
    const uint32_t count = static_cast<uint32_t>(wcslen(units));
    const uint32_t size = utf8_length(units, count);
    char *bytes = static_cast<char *>(malloc(size + 1));
    if (bytes == nullptr) {
        return 0;
    }
    utf8_copy(units, count, bytes);
    edit_set_text(pane, bytes, size);
    free(bytes);
    return 1;
}

LRESULT on_get_text_length(Pane *pane, WPARAM, LPARAM) {
    return static_cast<LRESULT>(utf16_length(pane_text(pane), 0, pane_length(pane)));
}

// As many characters as there is room for, and a terminator.
LRESULT on_get_text(Pane *pane, WPARAM wparam, LPARAM lparam) {
    wchar_t *units = reinterpret_cast<wchar_t *>(lparam);
    const Gap *text = pane_text(pane);
    uint32_t end = pane_length(pane);
    if (wparam == 0) {
        return 0;
    }
    while (utf16_length(text, 0, end) >= wparam) {
        --end;
    }
    utf16_copy(text, 0, end, units);
    const uint32_t count = utf16_length(text, 0, end);
    units[count] = 0;
    return static_cast<LRESULT>(count);
}

// Where the press is on nothing that is selected, the caret goes there.
LRESULT on_right_down(Pane *pane, WPARAM, LPARAM lparam) {
    const uint32_t position = layout_position_at(pane, point_of(lparam), Near::edge);
    SetFocus(pane->window);
    if (position < selection_start(pane) || position > selection_end(pane)) {
        select_range(pane, position, position);
    }
    return DefWindowProcW(pane->window, WM_RBUTTONDOWN, 0, lparam);
}

constexpr struct {
    UINT message;
    LRESULT (*handler)(Pane *pane, WPARAM wparam, LPARAM lparam);
} k_system_messages[] = {
    {WM_PAINT, on_paint},
    {WM_CHAR, on_character},
    {WM_MOUSEMOVE, on_mouse_move},
    {WM_LBUTTONDOWN, on_left_down},
    {WM_LBUTTONUP, on_left_up},
    {WM_RBUTTONDOWN, on_right_down},
    {WM_CAPTURECHANGED, on_capture_changed},
    {WM_TIMER, on_timer},
    {WM_CONTEXTMENU, on_context_menu},
    {WM_VSCROLL, on_vertical_bar},
    {WM_HSCROLL, on_horizontal_bar},
    {WM_MOUSEWHEEL, on_wheel},
    {WM_ERASEBKGND, on_erase},
    {WM_SIZE, on_size},
    {WM_SETFOCUS, on_set_focus},
    {WM_KILLFOCUS, on_kill_focus},
    {WM_IME_STARTCOMPOSITION, on_start_composition},
    {WM_IME_COMPOSITION, on_composition},
    {WM_GETDLGCODE, on_dialog_code},
    {WM_CUT, on_cut},
    {WM_COPY, on_copy},
    {WM_PASTE, on_paste},
    {WM_CLEAR, on_clear},
    {WM_UNDO, on_undo},
    {WM_SETTEXT, on_set_text},
    {WM_GETTEXT, on_get_text},
    {WM_GETTEXTLENGTH, on_get_text_length},
    {WM_DESTROY, on_destroy},
};

bool handle_system(Pane *pane, UINT message, WPARAM wparam, LPARAM lparam, LRESULT *result) {
    for (const auto &row : k_system_messages) {
        if (row.message == message) {
            *result = row.handler(pane, wparam, lparam);
            return true;
        }
    }
    return false;
}

// Keys and the pointer go to the system when they mean nothing here.
bool handle_perhaps(Pane *pane, UINT message, WPARAM wparam, LPARAM lparam, LRESULT *result) {
    *result = 0;
    if (message == WM_KEYDOWN || message == WM_SYSKEYDOWN) {
        pane->key_consumed = key_down(pane, wparam);
        return pane->key_consumed;
    }
    if (message == WM_SETCURSOR && LOWORD(lparam) == HTCLIENT) {
        *result = 1;
        return mouse_set_pointer(pane);
    }
    return false;
}

LRESULT CALLBACK pane_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    Pane *pane = reinterpret_cast<Pane *>(GetWindowLongPtrW(window, 0));
    if (pane == nullptr) {
        return message == WM_CREATE ? on_create(window)
                                    : DefWindowProcW(window, message, wparam, lparam);
    }
    LRESULT result = 0;
    if (handle_message(pane, message, wparam, lparam, &result) ||
        handle_perhaps(pane, message, wparam, lparam, &result) ||
        handle_system(pane, message, wparam, lparam, &result)) {
        return result;
    }
    return DefWindowProcW(window, message, wparam, lparam);
}

// The class belongs to the program, which makes windows of it, not to this library.
BOOL register_class() {
    WNDCLASSW description = {};
    description.lpfnWndProc = pane_proc;
    description.cbWndExtra = sizeof(Pane *);
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = k_class;
    return RegisterClassW(&description) != 0 ? TRUE : FALSE;
}

}  // namespace

BOOL WINAPI pane_entry(HINSTANCE, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        return register_class();
    }
    if (reason == DLL_PROCESS_DETACH) {
        UnregisterClassW(k_class, GetModuleHandleW(nullptr));
    }
    return TRUE;
}
