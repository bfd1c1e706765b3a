#include "shell/cellname_box.h"

#include "core/busy.h"
#include "core/host.h"
#include "resources/resource.h"
#include "shell/fonts.h"
#include "shell/layout.h"
#include "shell/main_window.h"
#include "shell/text_conversion.h"
#include "shell/views.h"
#include "web/cell_ops.h"
#include "web/cells.h"
#include "web/trail.h"

#include <cstring>

static struct CellnameBox {
    HWND window;
    HWND edit;
    WNDPROC previous;  // the edit field's own window procedure
    wchar_t text[k_conversion_units + 1];
    char name[k_read_name_max + 1];
    char current[k_read_name_max + 1];
} box;

namespace {

constexpr POINT k_inside_edit = {4, 4};

// Enter is a command and makes no sound.
LRESULT CALLBACK edit_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_KEYDOWN:
        if (wparam == VK_RETURN) {
            cellname_box_close_list();
            PostMessageW(main_window(), k_message_name_entered, 0, 0);
            return 0;
        }
        break;
    case WM_CHAR:
        if (wparam == '\r') {
            return 0;
        }
        break;
    case WM_SETFOCUS:
        set_active_pane(k_pane_box);
        break;
    default:
        break;
    }
    return CallWindowProcW(box.previous, window, message, wparam, lparam);
}

void add_entry(const char *name) {
    SendMessageW(box.window, CB_ADDSTRING, 0, as_lparam(to_utf16(name)));
}

// Selects the entry of the current cell, which is the first, and with it the field's text.
void put_current_back() {
    SendMessageW(box.window, CB_SETCURSEL, 0, 0);
    cellname_box_show_current();
}

// The name of the entry chosen, whole; null when there is none.
const char *chosen_name() {
    LRESULT entry = SendMessageW(box.window, CB_GETCURSEL, 0, 0);
    if (entry == CB_ERR) {
        return nullptr;
    }
    LRESULT length = SendMessageW(box.window, CB_GETLBTEXTLEN, static_cast<WPARAM>(entry), 0);
    if (length < 0 || length > static_cast<LRESULT>(k_conversion_units)) {
        return nullptr;
    }
    SendMessageW(box.window, CB_GETLBTEXT, static_cast<WPARAM>(entry), as_lparam(box.text));
    return to_8bit(box.text);
}

}  // namespace

void cellname_box_create(HWND parent) {
    box.window =
        CreateWindowExW(0, L"COMBOBOX", L"",
                        static_cast<DWORD>(WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_VSCROLL |
                                           CBS_DROPDOWN | CBS_AUTOHSCROLL | CBS_HASSTRINGS),
                        layout_slot(k_layout_box_left), layout_slot(k_layout_box_top),
                        layout_slot(k_layout_box_width), layout_slot(k_layout_box_height), parent,
                        reinterpret_cast<HMENU>(CTL_CELLNAME_BOX), program_instance(), nullptr);
    box.edit = ChildWindowFromPoint(box.window, k_inside_edit);
    if (box.edit == nullptr || box.edit == box.window) {
        box.edit = GetWindow(box.window, GW_CHILD);
    }
    box.previous = subclass_window(box.edit, edit_proc);
    register_pane(k_pane_box, box.window);
    HFONT font = make_font(L"Tahoma", 90, true, true);
    SendMessageW(box.window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

HWND cellname_edit() {
    return box.edit;
}

void cellname_box_show(const char *name) {
    SetWindowTextW(box.window, to_utf16(name));
}

void cellname_box_show_current() {
    cellname_box_show(current_cell() != 0 ? cell_name_string(current_cell()) : "");
}

const char *cellname_box_name() {
    GetWindowTextW(box.window, box.text, k_conversion_units);
    copy_characters(box.name, to_8bit(box.text), k_read_name_max);
    return box.name;
}

// What is not UTF-8 in a name comes back from the field as other bytes, so the names are compared
// as they are shown.
bool cellname_box_is_current() {
    const char *current = cell_name_string(current_cell());
    GetWindowTextW(box.window, box.text, k_conversion_units);
    if (wcscmp(box.text, to_utf16(current)) == 0) {
        return true;
    }
    copy_characters(box.current, current, k_read_name_max);
    return strcmp(cellname_box_name(), box.current) == 0;
}

void cellname_box_close_list() {
    if (SendMessageW(box.window, CB_GETDROPPEDSTATE, 0, 0) != 0) {
        SendMessageW(box.window, CB_SHOWDROPDOWN, FALSE, 0);
    }
}

// The list is rolled up again at once where the trail may not be walked.
void cellname_box_fill_list() {
    if (refused_while_busy()) {
        PostMessageW(box.window, CB_SHOWDROPDOWN, FALSE, 0);
        return;
    }
    SendMessageW(box.window, CB_RESETCONTENT, 0, 0);
    cellname_box_show_current();
    CellHandle last = current_cell();
    add_entry(cell_name_string(last));
    trail_walk_start();
    for (CellHandle cell = trail_walk_next(); cell != 0; cell = trail_walk_next()) {
        add_entry(cell_name_string(cell));
        last = cell;
    }
    if (last != index_root()) {
        add_entry("home");
    }
}

void cellname_box_list_chosen() {
    const char *name = chosen_name();
    if (name == nullptr) {
        return;
    }
    CellHandle before = current_cell();
    if (SendMessageW(box.window, CB_GETCURSEL, 0, 0) != 0) {
        jump_to_trail_entry(name);
    }
    if (current_cell() == before) {
        put_current_back();
    }
}
