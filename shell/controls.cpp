#include "shell/controls.h"

#include "resources/resource.h"
#include "shell/activation.h"
#include "shell/cell_list.h"
#include "shell/cellname_box.h"
#include "shell/fonts.h"
#include "shell/layout.h"
#include "shell/main_window.h"
#include "shell/panes/text_pane.h"
#include "shell/status_line.h"
#include "shell/views.h"

#include <aygshell.h>

static struct Controls {
    HWND menu_bar;
    HWND navigation;
    int32_t indent;  // of the navigation buttons
} controls;

namespace {

constexpr int k_tab_width = 30;   // at least
constexpr int k_tab_padding = 4;  // pixels left and right of a tab's text
constexpr uint32_t k_image_size = BAR_IMAGE_HEIGHT << 16 | BAR_IMAGE_WIDTH;

void load_scintilla() {
    if (LoadLibraryW(L"SciLexer.dll") == nullptr) {
        MessageBoxW(main_window(), L"SciLexer DLL could not be loaded", L"Error Loading Scintilla",
                    MB_OK);
    }
}

bool create_menu_bar(HWND parent) {
    SHMENUBARINFO info = {};
    info.cbSize = sizeof info;
    info.hwndParent = parent;
    info.nToolBarId = RES_MAIN_BAR;
    info.hInstRes = program_instance();
    info.nBmpId = RES_BAR_IMAGES;
    info.cBmpImages = BAR_IMAGE_COUNT;
    bool made = SHCreateMenuBar(&info) != FALSE;
    controls.menu_bar = made ? info.hwndMB : nullptr;
    return made;
}

// The window fills what the input panel leaves of the screen.
void place_main_window(HWND window) {
    Area area = visible_area();
    SetWindowPos(window, nullptr, 0, 0, area.width, area.height, SWP_NOMOVE | SWP_NOZORDER);
    compute_layout(area.width, area.height);
}

TBBUTTON navigation_button(int image, int command) {
    TBBUTTON button = {};
    button.iBitmap = image;
    button.idCommand = command;
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = TBSTYLE_BUTTON;
    return button;
}

void create_navigation(HWND parent) {
    TBBUTTON buttons[] = {
        navigation_button(BAR_IMAGE_BACK, CMD_BACK),
        navigation_button(BAR_IMAGE_FOLLOW, CMD_FOLLOW),
    };
    controls.navigation = CreateToolbarEx(
        parent,
        static_cast<DWORD>(WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_TOOLTIPS |
                           CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER),
        CTL_NAVIGATION, BAR_IMAGE_COUNT, program_instance(), RES_BAR_IMAGES, buttons, 2,
        BAR_IMAGE_WIDTH, BAR_IMAGE_HEIGHT, BAR_IMAGE_WIDTH, BAR_IMAGE_HEIGHT, sizeof(TBBUTTON));
    controls.indent = 0;
    indent_navigation_buttons(layout_slot(k_layout_bar_indent));
}

void insert_tab(HWND tabs, WPARAM index, const wchar_t *text) {
    wchar_t label[16];
    wcscpy(label, text);
    TCITEMW item = {};
    item.mask = TCIF_TEXT | TCIF_IMAGE;
    item.pszText = label;
    item.iImage = -1;
    SendMessageW(tabs, TCM_INSERTITEMW, index, as_lparam(&item));
}

void create_tabs(HWND parent) {
    HWND tabs = CreateWindowExW(
        0, L"SysTabControl32", L"",
        static_cast<DWORD>(WS_CHILD | WS_VISIBLE | TCS_BOTTOM | TCS_FOCUSNEVER), 0, 0, 0, 0, parent,
        reinterpret_cast<HMENU>(CTL_TABS), program_instance(), nullptr);
    register_pane(k_pane_tabs, tabs);
    insert_tab(tabs, 0, L"list");
    insert_tab(tabs, 1, L"text");
    insert_tab(tabs, 3, L"console");
    SendMessageW(tabs, TCM_SETPADDING, 0, MAKELPARAM(k_tab_padding, 2));
    SendMessageW(tabs, TCM_SETMINTABWIDTH, 0, k_tab_width);
    SendMessageW(tabs, TCM_SETITEMSIZE, 0,
                 MAKELPARAM(k_tab_width, layout_slot(k_layout_tabs_height)));
    HFONT font = make_font(L"Tahoma", 80, true, true);
    SendMessageW(tabs, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

}  // namespace

void create_controls(HWND window) {
    views_reset();
    load_scintilla();
    activation_reset();
    if (!create_menu_bar(window)) {
        MessageBoxW(window, L"Couldn't create menu bar", L"Quorvane", MB_OK);
        DestroyWindow(window);
        return;
    }
    place_main_window(window);
    create_navigation(window);
    cellname_box_create(window);
    status_line_create(window);
    cell_list_create(window);
    text_pane_create(window);
    console_pane_create(window);
    create_tabs(window);
    PostMessageW(window, k_message_start, 0, 0);
}

HWND menu_bar() {
    return controls.menu_bar;
}

HWND navigation_buttons() {
    return controls.navigation;
}

// A tool bar takes a new indent only when it works its buttons' places out again.
void indent_navigation_buttons(int32_t indent) {
    if (indent == controls.indent) {
        return;
    }
    controls.indent = indent;
    SendMessageW(controls.navigation, TB_SETINDENT, static_cast<WPARAM>(indent), 0);
    SendMessageW(controls.navigation, TB_SETBITMAPSIZE, 0, static_cast<LPARAM>(k_image_size));
}
