#include "shell/controls.h"

#include "resources/resource.h"
#include "shell/activation.h"
#include "shell/bars.h"
#include "shell/base/focus.h"
#include "shell/base/fonts.h"
#include "shell/base/handles.h"
#include "shell/cell_list.h"
#include "shell/cellname_box.h"
#include "shell/layout.h"
#include "shell/panes/text_pane.h"
#include "shell/status_line.h"

namespace {

constexpr int k_tab_width = 30;   // at least
constexpr int k_tab_padding = 4;  // pixels left and right of a tab's text

void load_scintilla() {
    if (LoadLibraryW(L"SciLexer.dll") == nullptr) {
        MessageBoxW(main_window(), L"SciLexer DLL could not be loaded", L"Error Loading Scintilla",
                    MB_OK);
    }
}

// The window fills what the input panel leaves of the screen.
void place_main_window(HWND window) {
    const Area area = visible_area();
    SetWindowPos(window, nullptr, 0, 0, area.width, area.height, SWP_NOMOVE | SWP_NOZORDER);
    compute_layout(area.width, area.height);
}

// A tab is asked for at its view's number; the control puts the last one where there is room.
void insert_tab(HWND tabs, ViewIndex view, const wchar_t *text) {
    wchar_t label[16];
    static_assert(sizeof L"console" <= sizeof label);  // the longest
    wcscpy(label, text);
    TCITEMW item = {};
    item.mask = TCIF_TEXT | TCIF_IMAGE;
    item.pszText = label;
    item.iImage = -1;
    SendMessageW(tabs, TCM_INSERTITEMW, view, as_lparam(&item));
}

void create_tabs(HWND parent) {
    HWND tabs = CreateWindowExW(
        0, L"SysTabControl32", L"",
        static_cast<DWORD>(WS_CHILD | WS_VISIBLE | TCS_BOTTOM | TCS_FOCUSNEVER), 0, 0, 0, 0, parent,
        reinterpret_cast<HMENU>(CTL_TABS), program_instance(), nullptr);
    register_pane(k_pane_tabs, tabs);
    insert_tab(tabs, k_view_list, L"list");
    insert_tab(tabs, k_view_text, L"text");
    insert_tab(tabs, k_view_console, L"console");
    SendMessageW(tabs, TCM_SETPADDING, 0, MAKELPARAM(k_tab_padding, 2));
    SendMessageW(tabs, TCM_SETMINTABWIDTH, 0, k_tab_width);
    SendMessageW(tabs, TCM_SETITEMSIZE, 0,
                 MAKELPARAM(k_tab_width, layout_slot(k_layout_tabs_height)));
    HFONT font = make_font(L"Tahoma", 80, true, true);
    SendMessageW(tabs, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

}  // namespace

void create_controls(HWND window) {
    focus_reset();
    load_scintilla();
    activation_reset();
    if (!menu_bar_make(window)) {
        MessageBoxW(window, L"Couldn't create menu bar", L"Quorvane", MB_OK);
        DestroyWindow(window);
        return;
    }
    place_main_window(window);
    navigation_buttons_create(window, layout_slot(k_layout_bar_indent));
    cellname_box_create(window);
    status_line_create(window);
    cell_list_create(window);
    text_pane_create(window);
    console_pane_create(window);
    create_tabs(window);
    PostMessageW(window, k_message_start, 0, 0);
}
