#include "shell/cell_list.h"

#include "core/host_view.h"
#include "core/text.h"
#include "platform/windows/text_conversion.h"
#include "resources/resource.h"
#include "shell/base/focus.h"
#include "shell/base/fonts.h"
#include "shell/base/handles.h"
#include "web/cell_ops.h"
#include "web/index.h"
#include "web/trail.h"

#include <cstring>

static struct CellList {
    HWND window;
    WNDPROC previous;                    // the control's own window procedure
    HTREEITEM items[k_block_count + 1];  // by cell handle; null: none
} list;

namespace {

constexpr uint32_t k_label_max = 128;  // characters of a name shown

// Only the keys that step from cell to cell do anything; typing looks nothing up.
LRESULT CALLBACK list_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_KEYDOWN:
        if (wparam == VK_UP) {
            SendMessageW(main_window(), WM_COMMAND, CMD_CELL_PREVIOUS, 0);
        } else if (wparam == VK_DOWN) {
            SendMessageW(main_window(), WM_COMMAND, CMD_CELL_NEXT, 0);
        }
        return 0;
    case WM_CHAR:
        return 0;
    case WM_SETFOCUS: {
        const LRESULT result = CallWindowProcW(list.previous, window, message, wparam, lparam);
        set_active_pane(k_pane_list);
        return result;
    }
    default:
        return CallWindowProcW(list.previous, window, message, wparam, lparam);
    }
}

HTREEITEM insert(CellHandle cell, HTREEITEM after) {
    char label[k_label_max + 1];
    text_copy_out(label, cell_name(cell), k_label_max);
    wchar_t text[k_label_max + 1];
    utf16_copy(text, k_label_max + 1, label);
    TVINSERTSTRUCTW item = {};
    item.hParent = TVI_ROOT;
    item.hInsertAfter = after;
    item.item.mask = TVIF_TEXT | TVIF_PARAM;
    item.item.pszText = text;
    item.item.lParam = static_cast<int16_t>(cell);
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(list.window, TVM_INSERTITEMW, 0, as_lparam(&item)));
}

HTREEITEM item_of(ListItem token) {
    return token <= k_block_count ? list.items[token] : nullptr;
}

void repaint() {
    InvalidateRect(list.window, nullptr, TRUE);
}

}  // namespace

void cell_list_create(HWND parent) {
    memset(&list, 0, sizeof list);
    list.window = CreateWindowExW(
        0, L"SysTreeView32", L"",
        static_cast<DWORD>(WS_CHILD | WS_VISIBLE | WS_VSCROLL | TVS_SHOWSELALWAYS), 0, 0, 0, 0,
        parent, reinterpret_cast<HMENU>(CTL_CELL_LIST), program_instance(), nullptr);
    list.previous = subclass_window(list.window, list_proc);
    register_pane(k_pane_list, list.window);
    HFONT font = make_font(L"Tahoma", 90, false, true);
    SendMessageW(list.window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

void cell_list_selection_changed(const NMTREEVIEWW *change) {
    const bool by_user = change->action == TVC_BYMOUSE || change->action == TVC_BYKEYBOARD;
    if (!by_user || change->itemNew.lParam == 0) {
        return;
    }
    const CellHandle cell = static_cast<CellHandle>(change->itemNew.lParam & 0xFFFF);
    if (go_to_cell(cell) != cell) {
        cell_list_select_current();
    }
    focus_pane(k_pane_list);
}

ListItem cell_list_insert_item(CellHandle cell) {
    list.items[cell] = insert(cell, TVI_SORT);
    return cell;
}

// Inserting in place costs a search of the whole list for each item, so that the control sorts
// once, by the same order. A command that came while quitting asked may have made a cell, and an
// item with it, in the list that was cleared for the end.
void cell_list_fill() {
    cell_list_clear();
    SendMessageW(list.window, WM_SETREDRAW, FALSE, 0);
    for (CellHandle cell = first_live_cell(); cell != 0; cell = next_live_cell(cell)) {
        list.items[cell] = insert(cell, TVI_LAST);
        cell_set_list_item(cell, cell);
    }
    SendMessageW(list.window, TVM_SORTCHILDREN, 0, as_lparam(TVI_ROOT));
    SendMessageW(list.window, WM_SETREDRAW, TRUE, 0);
    cell_list_select_current();
    repaint();
}

void cell_list_add(CellHandle cell) {
    cell_set_list_item(cell, cell_list_insert_item(cell));
    cell_list_select_current();
    repaint();
}

void cell_list_select_current() {
    HTREEITEM item = current_cell() != 0 ? item_of(cell_list_item(current_cell())) : nullptr;
    if (item != nullptr) {
        SendMessageW(list.window, TVM_SELECTITEM, TVGN_CARET, as_lparam(item));
        SendMessageW(list.window, TVM_ENSUREVISIBLE, 0, as_lparam(item));
    }
    repaint();
}

void cell_list_clear() {
    SendMessageW(list.window, WM_SETREDRAW, FALSE, 0);
    SendMessageW(list.window, TVM_DELETEITEM, 0, as_lparam(TVI_ROOT));
    SendMessageW(list.window, WM_SETREDRAW, TRUE, 0);
    memset(list.items, 0, sizeof list.items);
    repaint();
}

void cell_list_remove_item(ListItem item) {
    if (item_of(item) != nullptr) {
        SendMessageW(list.window, TVM_DELETEITEM, 0, as_lparam(item_of(item)));
        list.items[item] = nullptr;
    }
}
