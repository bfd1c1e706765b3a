#include "desktop/window.h"

#include "desktop/drop.h"
#include "desktop/frame.h"
#include "desktop/menu_bar.h"
#include "desktop/tabs.h"
#include "resources/resource.h"

#include <algorithm>
#include <cstdlib>

#include <commctrl.h>
#include <ole2.h>

namespace {

constexpr UINT k_message_open_dropped = WM_APP + 1;

// Client areas in pixels, the menu bar included.
constexpr SIZE k_default_size = {360, 560};
constexpr SIZE k_smallest_size = {240, 200};
constexpr long k_longest_side = 4000;

struct MainWindow {
    HWND window;
    WNDPROC program;  // the program's own window procedure
    SIZE size;        // client area before the window was minimised
    bool placing;     // the first size is being set; the program has no controls yet
    bool alt_used;    // the Alt key held down has been part of an accelerator
    bool shown;       // from now on the size is the user's and the program's business
    wchar_t directory[MAX_PATH];
    wchar_t dropped[k_drop_path_max];
};

MainWindow main_window;

SIZE first_size() {
    SIZE size = k_default_size;
    wchar_t text[32];
    const DWORD length = GetEnvironmentVariableW(L"QUORVANE_SCREEN", text, 32);
    if (length > 0 && length < 32) {
        wchar_t *end = text;
        const long width = wcstol(text, &end, 10);
        const long height = *end == L'x' ? wcstol(end + 1, &end, 10) : 0;
        if (width > 0 && height > 0 && *end == 0) {
            size = {std::min(width, k_longest_side), std::min(height, k_longest_side)};
        }
    }
    return {std::max(size.cx, k_smallest_size.cx), std::max(size.cy, k_smallest_size.cy)};
}

SIZE outer_size(HWND window, SIZE client) {
    RECT rect = {0, 0, client.cx, client.cy};
    AdjustWindowRectEx(&rect, static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE)));
    return {rect.right - rect.left, rect.bottom - rect.top};
}

// Sizes the window by its client area and keeps all of it on the screen's free area where it fits.
void set_first_size(HWND window) {
    const SIZE size = outer_size(window, first_size());
    const RECT free_area = window_free_area(window);
    RECT rect;
    GetWindowRect(window, &rect);
    const long left = std::max(free_area.left, std::min(rect.left, free_area.right - size.cx));
    const long top = std::max(free_area.top, std::min(rect.top, free_area.bottom - size.cy));
    SetWindowPos(window, nullptr, left, top, size.cx, size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

void set_icons(HWND window) {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    const int sizes[] = {SM_CXSMICON, SM_CXICON};
    for (int which = ICON_SMALL; which <= ICON_BIG; ++which) {
        const int size = GetSystemMetrics(sizes[which]);
        HANDLE icon = LoadImageW(instance, L"QUORVANE", IMAGE_ICON, size, size, LR_SHARED);
        SendMessageW(window, WM_SETICON, static_cast<WPARAM>(which),
                     reinterpret_cast<LPARAM>(icon));
    }
}

// Quitting asks about unsaved changes; it comes back only when the user keeps the program.
void send_quit(HWND window) {
    SendMessageW(window, WM_COMMAND, CMD_QUIT, 0);
}

// For Alt or F10 alone. Alt let go after Alt+Left is another matter, but the system cannot always
// tell the two apart.
bool on_menu_key() {
    const bool used = main_window.alt_used;
    main_window.alt_used = false;
    return used || menu_bar_open_first();
}

void on_command(WPARAM wparam) {
    constexpr WORD k_from_accelerator = 1;
    if (HIWORD(wparam) == k_from_accelerator && GetKeyState(VK_MENU) < 0) {
        main_window.alt_used = true;
    }
}

bool on_system_command(HWND window, WPARAM wparam, LPARAM lparam) {
    switch (wparam & 0xFFF0) {
    case SC_CLOSE:
        if (IsWindowEnabled(window)) {
            send_quit(window);
        }
        return true;
    case SC_KEYMENU:
        return lparam == 0 && on_menu_key();
    default:
        return false;
    }
}

// True when the program is to lay its window out.
bool on_size(HWND window, WPARAM wparam) {
    if (main_window.placing || wparam == SIZE_MINIMIZED || IsIconic(window)) {
        return false;
    }
    RECT rect;
    GetClientRect(window, &rect);
    main_window.size = {rect.right, rect.bottom};
    menu_bar_place();
    return true;
}

void on_get_min_max(HWND window, MINMAXINFO *info) {
    const SIZE size = outer_size(window, k_smallest_size);
    info->ptMinTrackSize = {size.cx, size.cy};
}

void on_drop_files(HDROP files) {
    static wchar_t path[k_drop_path_max];
    if (drop_web_file(files, path, k_drop_path_max)) {
        window_open_later(path);
    }
    DragFinish(files);
}

void on_child_created(HWND child) {
    wchar_t name[32] = L"";
    GetClassNameW(child, name, 32);
    if (lstrcmpW(name, L"Scintilla") == 0) {
        drop_register(child);
    } else if (lstrcmpW(name, WC_TABCONTROLW) == 0) {
        tabs_hook(child);
    }
}

void on_destroyed(HWND window) {
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(main_window.program));
    menu_bar_destroyed();
    main_window = {};
    OleUninitialize();
}

// What the program never sees: true, and the result, when the message is done with.
bool handle_before_program(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                           LRESULT *result) {
    *result = 0;
    switch (message) {
    case WM_SYSCOMMAND:
        return on_system_command(window, wparam, lparam);
    case WM_SIZE:
        return !on_size(window, wparam);
    case WM_NOTIFY:
        return menu_bar_notify(reinterpret_cast<NMHDR *>(lparam), result);
    case WM_DROPFILES:
        on_drop_files(reinterpret_cast<HDROP>(wparam));
        return true;
    case WM_QUERYENDSESSION:
        send_quit(window);  // the session goes on, because the user kept the program
        return true;
    case k_message_open_dropped:
        if (window_takes_files()) {
            open_dropped_file(main_window.dropped);
        }
        return true;
    default:
        return false;
    }
}

// What the program takes no notice of, before its own handling.
void observe(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_SHOWWINDOW:
        main_window.shown = true;
        break;
    case WM_WINDOWPOSCHANGING:
        if (!main_window.shown && !main_window.placing) {
            reinterpret_cast<WINDOWPOS *>(lparam)->flags |= SWP_NOSIZE | SWP_NOMOVE;
        }
        break;
    case WM_ENABLE:
        if (wparam) {
            SetCurrentDirectoryW(main_window.directory);
        }
        break;
    case WM_PARENTNOTIFY:
        if (LOWORD(wparam) == WM_CREATE) {
            on_child_created(reinterpret_cast<HWND>(lparam));
        }
        break;
    case WM_COMMAND:
        on_command(wparam);
        break;
    case WM_MENUSELECT:
        menu_bar_item_selected(wparam, lparam);
        break;
    default:
        break;
    }
}

LRESULT CALLBACK window_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const WNDPROC program = main_window.program;
    LRESULT result = 0;
    if (handle_before_program(window, message, wparam, lparam, &result)) {
        return result;
    }
    observe(message, wparam, lparam);
    if (message == WM_DESTROY) {
        RevokeDragDrop(window);
    } else if (message == WM_NCDESTROY) {
        on_destroyed(window);
    }
    result = CallWindowProcW(program, window, message, wparam, lparam);
    if (message == WM_GETMINMAXINFO) {
        on_get_min_max(window, reinterpret_cast<MINMAXINFO *>(lparam));
    }
    return result;
}

}  // namespace

void window_hook(HWND window) {
    main_window = {};
    main_window.window = window;
    GetCurrentDirectoryW(MAX_PATH, main_window.directory);
    SetWindowLongW(window, GWL_STYLE,
                   GetWindowLongW(window, GWL_STYLE) |
                       static_cast<LONG>(WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN));
    set_icons(window);
    main_window.program = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(window_proc));
    main_window.placing = true;
    set_first_size(window);
    main_window.placing = false;
    OleInitialize(nullptr);
    drop_register(window);
}

HWND window_hooked() {
    return main_window.window;
}

SIZE window_client_size() {
    if (main_window.window && !IsIconic(main_window.window)) {
        RECT rect;
        GetClientRect(main_window.window, &rect);
        main_window.size = {rect.right, rect.bottom};
    }
    return main_window.size;
}

RECT window_free_area(HWND window) {
    MONITORINFO screen = {};
    screen.cbSize = sizeof screen;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &screen);
    return screen.rcWork;
}

bool window_takes_files() {
    return main_window.window && IsWindowEnabled(main_window.window);
}

bool window_open_later(const wchar_t *path) {
    if (!window_takes_files()) {
        return false;
    }
    lstrcpynW(main_window.dropped, path, k_drop_path_max);
    return PostMessageW(main_window.window, k_message_open_dropped, 0, 0);
}

void desktop_idle() {
    main_window.alt_used = main_window.alt_used && GetKeyState(VK_MENU) < 0;
    MsgWaitForMultipleObjectsEx(0, nullptr, 15, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}
