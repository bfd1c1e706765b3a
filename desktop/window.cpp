// SHCreateMenuBar adopts the main window while the program handles WM_CREATE. From then on, until
// WM_NCDESTROY, window_proc() stands before the program's own procedure. A message has at most one
// row in k_handlers, and its handler either answers it or hands it on by to_program(); what has no
// row is handed on as it is.
//
// The window goes through three stages, one after the other:
//
//     framing   adopt_main_window() gives it its frame and size. The program has no controls yet,
//               and is not told of the size.
//     hidden    The program makes its controls and asks for the handheld's whole screen, which it
//               does not get.
//     shown     From the first WM_SHOWWINDOW on the size is the user's and the program's business.
//
// Alt or F10 alone opens the first menu (SC_KEYMENU). Alt let go after Alt+Left is another matter,
// but the system cannot always tell the two apart: an accelerator with Alt sets `alt_used`, which
// is cleared by the SC_KEYMENU that comes of it, or else when the queue is empty and Alt is up.
#include "desktop/window.h"

#include "desktop/drop.h"
#include "desktop/frame.h"
#include "desktop/menu_bar.h"
#include "desktop/popups.h"
#include "desktop/size.h"
#include "desktop/tabs.h"
#include "resources/resource.h"

#include <commctrl.h>

#include <iterator>

enum Stage { k_stage_framing, k_stage_hidden, k_stage_shown, k_stage_count };

static struct AdoptedWindow {
    HWND window;
    WNDPROC program;  // the program's own window procedure
    Stage stage;
    bool alt_used;  // the Alt key held down has been part of an accelerator
    SIZE size;      // client area before the window was minimised
    wchar_t directory[MAX_PATH];
} adopted;

namespace {

constexpr struct {
    bool tells_size;    // the program hears of sizes
    bool takes_places;  // the window goes where it is asked to
} k_stages[] = {
    {false, true},  // framing
    {true, false},  // hidden
    {true, true},   // shown
};
static_assert(std::size(k_stages) == k_stage_count);

struct Message {
    HWND window;
    UINT id;
    WPARAM wparam;
    LPARAM lparam;
};

LRESULT to_program(const Message &message) {
    return CallWindowProcW(adopted.program, message.window, message.id, message.wparam,
                           message.lparam);
}

// ---- The frame ----------------------------------------------------------------------------------

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

LRESULT on_show(const Message &message) {
    adopted.stage = k_stage_shown;
    return to_program(message);
}

LRESULT on_place_asked_for(const Message &message) {
    if (!k_stages[adopted.stage].takes_places) {
        reinterpret_cast<WINDOWPOS *>(message.lparam)->flags |= SWP_NOSIZE | SWP_NOMOVE;
    }
    return to_program(message);
}

LRESULT on_size(const Message &message) {
    if (!k_stages[adopted.stage].tells_size || message.wparam == SIZE_MINIMIZED ||
        IsIconic(message.window) != 0) {
        return 0;
    }
    RECT rect;
    GetClientRect(message.window, &rect);
    adopted.size = {rect.right, rect.bottom};
    menu_bar_place();
    return to_program(message);
}

LRESULT on_size_limits(const Message &message) {
    const LRESULT result = to_program(message);
    limit_size(message.window, reinterpret_cast<MINMAXINFO *>(message.lparam));
    return result;
}

// ---- Quitting, and the Alt key ------------------------------------------------------------------

// Quitting asks about unsaved changes; it comes back only when the user keeps the program.
void send_quit(HWND window) {
    SendMessageW(window, WM_COMMAND, CMD_QUIT, 0);
}

LRESULT on_close_button(const Message &message) {
    if (IsWindowEnabled(message.window) != 0) {
        send_quit(message.window);
    }
    return 0;
}

LRESULT on_menu_key(const Message &message) {
    const bool used = adopted.alt_used;
    adopted.alt_used = false;
    return used || popups_run_first() ? 0 : to_program(message);
}

LRESULT on_system_command(const Message &message) {
    const WPARAM command = message.wparam & 0xFFF0;
    if (command == SC_CLOSE) {
        return on_close_button(message);
    }
    return command == SC_KEYMENU && message.lparam == 0 ? on_menu_key(message)
                                                        : to_program(message);
}

// The session goes on, because the user kept the program.
LRESULT on_end_of_session(const Message &message) {
    send_quit(message.window);
    return 0;
}

LRESULT on_command(const Message &message) {
    constexpr WORD k_from_accelerator = 1;
    if (HIWORD(message.wparam) == k_from_accelerator && GetKeyState(VK_MENU) < 0) {
        adopted.alt_used = true;
    }
    return to_program(message);
}

// ---- The menu bar, and dropped files ------------------------------------------------------------

LRESULT on_notify(const Message &message) {
    LRESULT result = 0;
    return menu_bar_notify(reinterpret_cast<NMHDR *>(message.lparam), &result)
               ? result
               : to_program(message);
}

LRESULT on_menu_item(const Message &message) {
    popups_item_selected(message.wparam, message.lparam);
    return to_program(message);
}

LRESULT on_drop_files(const Message &message) {
    drop_files_arrived(reinterpret_cast<HDROP>(message.wparam));
    return 0;
}

LRESULT on_open_dropped(const Message &) {
    drop_open();
    return 0;
}

// ---- Children, dialogs, and the end -------------------------------------------------------------

void dress_child(HWND child) {
    wchar_t name[32] = L"";
    GetClassNameW(child, name, 32);
    if (lstrcmpW(name, L"Scintilla") == 0) {
        drop_register(child);
    } else if (lstrcmpW(name, WC_TABCONTROLW) == 0) {
        tabs_hook(child);
    }
}

LRESULT on_child(const Message &message) {
    if (LOWORD(message.wparam) == WM_CREATE) {
        dress_child(reinterpret_cast<HWND>(message.lparam));
    }
    return to_program(message);
}

// The window takes input again when a dialog has been closed.
LRESULT on_enable(const Message &message) {
    if (message.wparam != 0) {
        SetCurrentDirectoryW(adopted.directory);
    }
    return to_program(message);
}

LRESULT on_destroy(const Message &message) {
    drop_stop();
    return to_program(message);
}

LRESULT on_destroyed(const Message &message) {
    const WNDPROC program = adopted.program;
    SetWindowLongPtrW(message.window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(program));
    menu_bar_destroyed();
    adopted = {};
    drop_end();
    return CallWindowProcW(program, message.window, message.id, message.wparam, message.lparam);
}

constexpr struct {
    UINT message;
    LRESULT (*handler)(const Message &message);
} k_handlers[] = {
    {WM_SHOWWINDOW, on_show},
    {WM_WINDOWPOSCHANGING, on_place_asked_for},
    {WM_SIZE, on_size},
    {WM_GETMINMAXINFO, on_size_limits},
    {WM_SYSCOMMAND, on_system_command},
    {WM_QUERYENDSESSION, on_end_of_session},
    {WM_COMMAND, on_command},
    {WM_NOTIFY, on_notify},
    {WM_MENUSELECT, on_menu_item},
    {WM_DROPFILES, on_drop_files},
    {k_message_open_dropped, on_open_dropped},
    {WM_PARENTNOTIFY, on_child},
    {WM_ENABLE, on_enable},
    {WM_DESTROY, on_destroy},
    {WM_NCDESTROY, on_destroyed},
};

LRESULT CALLBACK window_proc(HWND window, UINT id, WPARAM wparam, LPARAM lparam) {
    const Message message = {window, id, wparam, lparam};
    for (const auto &row : k_handlers) {
        if (row.message == id) {
            return row.handler(message);
        }
    }
    return to_program(message);
}

}  // namespace

void adopt_main_window(HWND window) {
    adopted = {};
    adopted.window = window;
    GetCurrentDirectoryW(MAX_PATH, adopted.directory);
    SetWindowLongW(window, GWL_STYLE,
                   GetWindowLongW(window, GWL_STYLE) |
                       static_cast<LONG>(WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN));
    set_icons(window);
    adopted.program = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(window_proc));
    set_first_size(window);
    adopted.stage = k_stage_hidden;
    drop_start(window);
}

HWND adopted_main_window() {
    return adopted.window;
}

SIZE adopted_client_size() {
    if (adopted.window != nullptr && IsIconic(adopted.window) == 0) {
        RECT rect;
        GetClientRect(adopted.window, &rect);
        adopted.size = {rect.right, rect.bottom};
    }
    return adopted.size;
}

void desktop_idle() {
    adopted.alt_used = adopted.alt_used && GetKeyState(VK_MENU) < 0;
    MsgWaitForMultipleObjectsEx(0, nullptr, 15, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}
