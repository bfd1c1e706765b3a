// TrackPopupMenuEx() shows one pop-up and returns when it is closed. A walk is a round of such
// calls: while a pop-up is open a message filter sees what the user does before the menu does.
// Where that asks for another pop-up, the filter notes its button as the next one and ends the
// menu; popups_run() then opens the next, until there is none.
//
// What asks for another pop-up, and what closes the one that is open:
//
//     the pointer moves to another button     that button's
//     another button is pressed               that button's
//     the open pop-up's button is pressed     closes
//     Left or Right                           the neighbour's, as k_steps says
//
// Everything else is the menu's own.
#include "desktop/popups.h"

#include <commctrl.h>

static struct Popups {
    HWND bar;
    HMENU menu;
    int count;  // of buttons
    WORD indexes[k_buttons_max];
    HHOOK filter;        // while a walk is under way
    int open;            // the button whose pop-up is open, or -1
    int next;            // the button whose pop-up is to open next, or -1
    POINT pointer;       // where the mouse was last seen
    bool opens_submenu;  // the highlighted item does
    bool in_submenu;     // the highlighted item stands in one
} popups;

namespace {

// How far the arrow keys walk along the bar, by the highlighted item; 0: the key is the menu's.
constexpr struct {
    int left;
    int right;
} k_steps[2][2] = {
    // plain, opens a sub-menu
    {{-1, 1}, {-1, 0}},  // an item of the pop-up
    {{0, 1}, {0, 0}},    // an item of a sub-menu
};

// The next button to the left (-1) or right (1) that has a pop-up, around the ends.
int neighbour(int button, int step) {
    do {
        button = (button + step + popups.count) % popups.count;
    } while (popup_of(button) == nullptr);
    return button;
}

int button_at(POINT screen_point) {
    ScreenToClient(popups.bar, &screen_point);
    return static_cast<int>(
        SendMessageW(popups.bar, TB_HITTEST, 0, reinterpret_cast<LPARAM>(&screen_point)));
}

void open_instead(int button) {
    popups.next = button;
    EndMenu();
}

// True when the menu is not to see the message.
bool filter_mouse(const MSG &message) {
    const bool pressed = message.message == WM_LBUTTONDOWN;
    const bool moved = message.pt.x != popups.pointer.x || message.pt.y != popups.pointer.y;
    const int button = button_at(message.pt);
    popups.pointer = message.pt;
    if ((pressed || moved) && popup_of(button) != nullptr && button != popups.open) {
        open_instead(button);
        return pressed;
    }
    if (pressed && button == popups.open) {
        EndMenu();
        return true;
    }
    return false;
}

bool filter_key(WPARAM key) {
    const auto &steps = k_steps[popups.in_submenu][popups.opens_submenu];
    const int step = key == VK_LEFT ? steps.left : key == VK_RIGHT ? steps.right : 0;
    if (step == 0) {
        return false;
    }
    open_instead(neighbour(popups.open, step));
    return true;
}

LRESULT CALLBACK filter_menu_message(int code, WPARAM wparam, LPARAM lparam) {
    const MSG &message = *reinterpret_cast<const MSG *>(lparam);
    bool done = false;
    if (code == MSGF_MENU) {
        if (message.message == WM_MOUSEMOVE || message.message == WM_LBUTTONDOWN) {
            done = filter_mouse(message);
        } else if (message.message == WM_KEYDOWN) {
            done = filter_key(message.wParam);
        }
    }
    return done ? TRUE : CallNextHookEx(popups.filter, code, wparam, lparam);
}

void redraw() {
    InvalidateRect(popups.bar, nullptr, TRUE);
    UpdateWindow(popups.bar);
}

// Shows one pop-up above its button until it is closed.
void track(int button) {
    TPMPARAMS around = {sizeof around, {}};
    SendMessageW(popups.bar, TB_GETITEMRECT, static_cast<WPARAM>(button),
                 reinterpret_cast<LPARAM>(&around.rcExclude));
    MapWindowPoints(popups.bar, nullptr, reinterpret_cast<POINT *>(&around.rcExclude), 2);
    popups.open = button;
    popups.next = -1;
    popups.opens_submenu = false;
    popups.in_submenu = false;
    GetCursorPos(&popups.pointer);
    redraw();
    TrackPopupMenuEx(popup_of(button), TPM_LEFTALIGN | TPM_BOTTOMALIGN | TPM_VERTICAL,
                     around.rcExclude.left, around.rcExclude.top, GetParent(popups.bar), &around);
}

}  // namespace

void popups_start(HWND bar, HMENU menu) {
    popups = {};
    popups.bar = bar;
    popups.menu = menu;
    popups.open = -1;
}

void popups_add_button(WORD popup) {
    popups.indexes[popups.count++] = popup;
}

void popups_end() {
    if (popups.menu != nullptr) {
        DestroyMenu(popups.menu);
    }
    popups = {};
}

HMENU popups_menu() {
    return popups.menu;
}

HMENU popup_of(int button) {
    if (button < 0 || button >= popups.count || popups.indexes[button] == k_no_popup) {
        return nullptr;
    }
    return GetSubMenu(popups.menu, popups.indexes[button]);
}

int popups_open_button() {
    return popups.open;
}

// The bar goes with the window, which a pop-up may outlive.
void popups_run(int button) {
    HHOOK filter =
        SetWindowsHookExW(WH_MSGFILTER, filter_menu_message, nullptr, GetCurrentThreadId());
    popups.filter = filter;
    while (button >= 0 && popups.bar != nullptr) {
        track(button);
        button = popups.next;
    }
    UnhookWindowsHookEx(filter);
    popups.filter = nullptr;
    popups.open = -1;
    if (popups.bar != nullptr) {
        redraw();
    }
}

bool popups_run_first() {
    for (int button = 0; button < popups.count; ++button) {
        if (popup_of(button) != nullptr) {
            popups_run(button);
            return true;
        }
    }
    return false;
}

void popups_item_selected(WPARAM wparam, LPARAM lparam) {
    popups.opens_submenu = (HIWORD(wparam) & MF_POPUP) != 0 && HIWORD(wparam) != 0xFFFF;
    popups.in_submenu = reinterpret_cast<HMENU>(lparam) != popup_of(popups.open);
}
