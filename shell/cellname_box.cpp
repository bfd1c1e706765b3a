#include "shell/cellname_box.h"

#include "core/busy.h"
#include "platform/windows/text_conversion.h"
#include "resources/resource.h"
#include "shell/base/focus.h"
#include "shell/base/fonts.h"
#include "shell/base/handles.h"
#include "shell/layout.h"
#include "web/cell_ops.h"
#include "web/cells.h"
#include "web/index.h"
#include "web/trail.h"

#include <cstring>

// The current cell, the trail, home.
constexpr uint32_t k_entries_max = 33;

static struct CellnameBox {
    HWND window;
    HWND edit;
    WNDPROC previous;  // the control's own window procedures
    WNDPROC edit_previous;
    CellHandle entries[k_entries_max];  // of the list, as it was filled last
    uint32_t entry_count;
    wchar_t text[k_conversion_units + 1];
    char name[k_read_name_max + 1];
    char current[k_read_name_max + 1];
} box;

namespace {

constexpr POINT k_inside_edit = {4, 4};

void add_entry(CellHandle cell) {
    if (box.entry_count < k_entries_max) {
        box.entries[box.entry_count++] = cell;
        SendMessageW(box.window, CB_ADDSTRING, 0, as_lparam(to_utf16(cell_name_string(cell))));
    }
}

// Some systems draw the selection of a field that has no focus, as if it had.
void select_all() {
    if (pane_has_focus(k_pane_box)) {
        SendMessageW(box.edit, EM_SETSEL, 0, -1);
    }
}

void show_current() {
    cellname_box_show(current_cell() != 0 ? cell_name_string(current_cell()) : "");
}

bool list_is_open() {
    return SendMessageW(box.window, CB_GETDROPPEDSTATE, 0, 0) != 0;
}

// The trail as it is now.
void fill_list() {
    SendMessageW(box.window, CB_RESETCONTENT, 0, 0);
    show_current();
    box.entry_count = 0;
    add_entry(current_cell());
    trail_walk_start();
    for (CellHandle cell = trail_walk_next(); cell != 0; cell = trail_walk_next()) {
        add_entry(cell);
    }
    if (box.entries[box.entry_count - 1] != index_root()) {
        add_entry(index_root());
    }
}

// Before a key walks the list from the current cell, which is its first entry. False where the
// trail may not be walked.
bool prepare_walk() {
    if (refused_while_busy()) {
        return false;
    }
    if (!list_is_open()) {
        fill_list();
        SendMessageW(box.window, CB_SETCURSEL, 0, 0);
    }
    return true;
}

// True when the key is done with. Enter and Escape make no sound.
bool take_key(WPARAM key) {
    switch (key) {
    case VK_RETURN:
        cellname_box_close_list();
        PostMessageW(main_window(), k_message_name_entered, 0, 0);
        return true;
    case VK_ESCAPE:
        cellname_box_close_list();
        show_current();
        return true;
    case VK_UP:
    case VK_DOWN:
    case VK_PRIOR:
    case VK_NEXT:
        return !prepare_walk();
    default:
        return false;
    }
}

// True when the message is done with.
bool handle_first(UINT message, WPARAM wparam) {
    switch (message) {
    case WM_KEYDOWN:
        return take_key(wparam);
    case WM_CHAR:
        return wparam == '\r' || wparam == VK_ESCAPE;
    case WM_LBUTTONDOWN:
        SetFocus(box.edit);  // first, so that the press then puts the caret where it points
        return false;
    case WM_SETFOCUS:
        set_active_pane(k_pane_box);
        return false;
    default:
        return false;
    }
}

// The next name typed replaces the one that the box shows. What was typed and not entered is
// dropped when the box is left, but waits while the user is in another program.
void follow_focus(UINT message, WPARAM other) {
    if (message == WM_SETFOCUS && cellname_box_is_current()) {
        select_all();
    } else if (message == WM_KILLFOCUS && other != 0) {
        show_current();
    }
}

LRESULT CALLBACK edit_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (handle_first(message, wparam)) {
        return 0;
    }
    const LRESULT result = CallWindowProcW(box.edit_previous, window, message, wparam, lparam);
    follow_focus(message, wparam);
    return result;
}

// The wheel would walk a list that nobody sees.
LRESULT CALLBACK box_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    return message == WM_MOUSEWHEEL && !list_is_open()
               ? 0
               : CallWindowProcW(box.previous, window, message, wparam, lparam);
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
    box.previous = subclass_window(box.window, box_proc);
    box.edit_previous = subclass_window(box.edit, edit_proc);
    register_pane(k_pane_box, box.window);
    HFONT font = make_font(L"Tahoma", 90, true, true);
    SendMessageW(box.window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

HWND cellname_edit() {
    return box.edit;
}

void cellname_box_show(const char *name) {
    SetWindowTextW(box.window, to_utf16(name));
    select_all();
}

// An open list goes with the trail, but not in the middle of telling about a choice.
void cellname_box_show_current() {
    show_current();
    if (list_is_open()) {
        PostMessageW(main_window(), k_message_name_settled, 0, 0);
    }
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
    if (list_is_open()) {
        SendMessageW(box.window, CB_SHOWDROPDOWN, FALSE, 0);
    }
}

// The list is rolled up again at once where the trail may not be walked.
void cellname_box_fill_list() {
    if (refused_while_busy()) {
        PostMessageW(box.window, CB_SHOWDROPDOWN, FALSE, 0);
    } else {
        fill_list();
    }
}

// The control writes the entry into its field behind the notification, wherever the choice led.
void cellname_box_list_chosen() {
    const LRESULT entry = SendMessageW(box.window, CB_GETCURSEL, 0, 0);
    PostMessageW(main_window(), k_message_name_settled, 0, 0);
    if (entry > 0 && entry < static_cast<LRESULT>(box.entry_count)) {
        jump_to_trail_cell(box.entries[entry]);
    }
}

void cellname_box_settle() {
    if (list_is_open()) {
        fill_list();
        SendMessageW(box.window, CB_SETCURSEL, 0, 0);
    } else {
        show_current();
    }
}
