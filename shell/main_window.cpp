#include "shell/main_window.h"

#include "core/host_view.h"
#include "core/recovery.h"
#include "file/document.h"
#include "platform/windows/text_conversion.h"
#include "program/recovery.h"
#include "resources/resource.h"
#include "shell/activation.h"
#include "shell/base/handles.h"
#include "shell/cell_commands.h"
#include "shell/cell_list.h"
#include "shell/cellname_box.h"
#include "shell/commands.h"
#include "shell/controls.h"
#include "shell/layout.h"
#include "shell/menu_items.h"
#include "shell/panes/input.h"
#include "shell/panes/scintilla.h"
#include "shell/panes/styles.h"
#include "shell/views.h"

#include <cstring>

static struct StartUp {
    char path[k_start_path_max + 1];  // named on the command line
} start_up;

namespace {

constexpr const wchar_t *k_class_name = L"Quorvane";

struct Call {
    LRESULT (*handler)(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
    HWND window;
    UINT message;
    WPARAM wparam;
    LPARAM lparam;
    LRESULT result;
};

LRESULT on_create(HWND window, UINT, WPARAM, LPARAM) {
    set_main_window(window);
    create_controls(window);
    return 0;
}

LRESULT on_start(HWND, UINT, WPARAM, LPARAM) {
    doc_start(start_up.path);
    return 0;
}

LRESULT on_name_entered(HWND, UINT, WPARAM, LPARAM) {
    enter_box_name();
    return 0;
}

LRESULT on_name_settled(HWND, UINT, WPARAM, LPARAM) {
    cellname_box_settle();
    return 0;
}

// The system gives the focus to the window itself when it comes back from being minimised, and when
// a control goes that had it.
LRESULT on_focus(HWND, UINT, WPARAM, LPARAM) {
    restore_focus();
    return 0;
}

LRESULT on_hot_spot(HWND, UINT, WPARAM, LPARAM lparam) {
    hot_spot_arrived(lparam);
    return 0;
}

LRESULT on_recover(HWND, UINT, WPARAM, LPARAM) {
    program_recover();
    return 0;
}

LRESULT on_tabs(const NMHDR *header) {
    if (header->code == TCN_SELCHANGE) {
        show_view(
            view_of_tab(static_cast<int>(SendMessageW(header->hwndFrom, TCM_GETCURSEL, 0, 0))));
    }
    return 0;
}

LRESULT on_text_pane(const NMHDR *header) {
    const SCNotification *event = reinterpret_cast<const SCNotification *>(header);
    if (header->code == SCN_HOTSPOTCLICK) {
        post_hot_spot_click(event->position);
    } else if (header->code == SCN_STYLENEEDED) {
        style_pane(header->hwndFrom, event->position);
    } else if (header->code == SCN_ZOOM) {
        pane_zoomed(header->hwndFrom);
    }
    return 0;
}

LRESULT on_notify(HWND, UINT, WPARAM wparam, LPARAM lparam) {
    const NMHDR *header = reinterpret_cast<const NMHDR *>(lparam);
    switch (wparam) {
    case CTL_CELL_LIST:
        if (header->code == TVN_SELCHANGEDW) {
            cell_list_selection_changed(reinterpret_cast<const NMTREEVIEWW *>(lparam));
        }
        return 0;
    case CTL_TABS:
        return on_tabs(header);
    case CTL_TEXT_PANE:
    case CTL_CONSOLE_PANE:
        return on_text_pane(header);
    default:
        return 0;
    }
}

LRESULT on_size(HWND, UINT, WPARAM wparam, LPARAM lparam) {
    lay_out(wparam, lparam);
    return 0;
}

LRESULT on_button(HWND, UINT, WPARAM, LPARAM) {
    return 0;
}

LRESULT on_paint(HWND window, UINT, WPARAM, LPARAM) {
    PAINTSTRUCT paint;
    HDC context = BeginPaint(window, &paint);
    SetBkColor(context, GetSysColor(COLOR_BTNFACE));
    SetTextColor(context, GetSysColor(COLOR_WINDOWTEXT));
    EndPaint(window, &paint);
    return 0;
}

LRESULT on_command(HWND, UINT, WPARAM wparam, LPARAM) {
    run_command(LOWORD(wparam), HIWORD(wparam));
    return 0;
}

// The system menu has no items of the program's.
LRESULT on_menu_opening(HWND, UINT, WPARAM wparam, LPARAM) {
    grey_dead_items(reinterpret_cast<HMENU>(wparam));
    return 0;
}

LRESULT on_destroy(HWND, UINT, WPARAM, LPARAM) {
    PostQuitMessage(0);
    return 0;
}

constexpr struct {
    UINT message;
    LRESULT (*handler)(HWND, UINT, WPARAM, LPARAM);
} k_messages[] = {
    {WM_CREATE, on_create},
    {k_message_start, on_start},
    {k_message_name_entered, on_name_entered},
    {WM_NOTIFY, on_notify},
    {WM_SIZE, on_size},
    {WM_LBUTTONUP, on_button},
    {WM_LBUTTONDOWN, on_button},
    {WM_PAINT, on_paint},
    {WM_COMMAND, on_command},
    {WM_SETTINGCHANGE, on_setting_change},
    {WM_ACTIVATE, on_activate},
    {k_message_activation, on_activation_request},
    {WM_DESTROY, on_destroy},
    {WM_INITMENUPOPUP, on_menu_opening},
    {k_message_hot_spot, on_hot_spot},
    {k_message_recover, on_recover},
    {k_message_name_settled, on_name_settled},
    {WM_SETFOCUS, on_focus},
};

void run_call(void *argument) {
    Call *call = static_cast<Call *>(argument);
    call->result = call->handler(call->window, call->message, call->wparam, call->lparam);
}

// Recovery fills the cell list anew, which must not happen while the control that holds it is in
// the middle of telling about a change.
void recover(const Call &call) {
    if (call.message == WM_NOTIFY) {
        PostMessageW(call.window, k_message_recover, 0, 0);
    } else {
        program_recover();
    }
}

bool register_class() {
    WNDCLASSW window_class = {};
    window_class.style = CS_HREDRAW | CS_VREDRAW;
    window_class.lpfnWndProc = main_window_proc;
    window_class.hInstance = program_instance();
    window_class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    window_class.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    window_class.lpszClassName = k_class_name;
    return RegisterClassW(&window_class) != 0;
}

// The handheld wants the lowest bit of the handle set, by which a window comes to the front with
// everything that it owns; others know no such handle.
bool bring_other_copy_forward() {
    HWND other = FindWindowW(k_class_name, nullptr);
    if (other == nullptr) {
        return false;
    }
    if ((GetWindowLongW(other, GWL_STYLE) & static_cast<LONG>(WS_MINIMIZE)) != 0) {
        ShowWindow(other, SW_RESTORE);
    }
    HWND marked = reinterpret_cast<HWND>(reinterpret_cast<ULONG_PTR>(other) | 1);
    if (SetForegroundWindow(marked) == 0) {
        SetForegroundWindow(other);
    }
    return true;
}

HWND make_window(int show) {
    HWND window = CreateWindowExW(0, k_class_name, k_class_name, WS_BORDER, CW_USEDEFAULT,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr,
                                  program_instance(), nullptr);
    if (IsWindow(window) == 0) {
        return nullptr;
    }
    ShowWindow(window, show);
    UpdateWindow(window);
    return window;
}

}  // namespace

HWND create_main_window(HINSTANCE instance, const wchar_t *command_line, int show) {
    set_program_instance(instance);
    if (bring_other_copy_forward() || !register_class()) {
        return nullptr;
    }
    copy_characters(start_up.path, command_line != nullptr ? to_8bit(command_line) : "",
                    k_start_path_max);
    return make_window(show);
}

LRESULT CALLBACK main_window_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    for (const auto &row : k_messages) {
        if (row.message == message) {
            Call call = {row.handler, window, message, wparam, lparam, 0};
            if (recovery_run(run_call, &call) < 0) {
                recover(call);
            }
            return call.result;
        }
    }
    return DefWindowProcW(window, message, wparam, lparam);
}

void set_window_title(const char *title) {
    SetWindowTextW(main_window(), to_utf16(title));
}
