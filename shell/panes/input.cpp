#include "shell/panes/input.h"

#include "core/busy.h"
#include "core/names.h"
#include "resources/resource.h"
#include "shell/base/focus.h"
#include "shell/base/handles.h"
#include "shell/panes/scintilla.h"
#include "web/cell_ops.h"
#include "web/cells.h"
#include "web/options.h"
#include "web/trail.h"

#include <cstdlib>
#include <cstring>

static struct PaneInput {
    WNDPROC text_previous;  // the controls' own window procedures
    WNDPROC console_previous;
    char word[k_cellname_max + 1];
    HWND hidden;     // pane whose selection is hidden
    POINT press;     // where the mouse was pressed last
    DWORD left_at;   // tick at which a click on a hot spot had led to another cell
    bool just_left;  // it did, and a second press may still belong to that click
} input;

namespace {

// True for the press that makes a double click of one that has already led to another cell.
bool is_stray_press(POINT at) {
    if (!input.just_left) {
        return false;
    }
    input.just_left = false;
    return GetTickCount() - input.left_at <= GetDoubleClickTime() &&
           labs(at.x - input.press.x) <= GetSystemMetrics(SM_CXDOUBLECLK) &&
           labs(at.y - input.press.y) <= GetSystemMetrics(SM_CYDOUBLECLK);
}

// The characters that keys with Ctrl would type; line ends and Backspace are none of them. Keys of
// the number pad type their sign with Ctrl too. (Ctrl and Alt together type characters that a
// keyboard has no key for.)
bool is_control_character(WPARAM code) {
    if (code >= ' ') {
        return GetKeyState(VK_CONTROL) < 0 && GetKeyState(VK_MENU) >= 0;
    }
    return code != '\r' && code != '\n' && code != '\b';
}

POINT mouse_point(LPARAM lparam) {
    return {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
}

bool swallow_press(LPARAM lparam) {
    const POINT at = mouse_point(lparam);
    const bool stray = is_stray_press(at);
    input.press = at;
    return stray;
}

// Some components see a double click by themselves and send the message to themselves, others get
// it from the system.
bool swallow_double_click(HWND window, LPARAM lparam) {
    if (is_stray_press(mouse_point(lparam))) {
        return true;
    }
    if (option_dclick_create() != 1) {
        return false;
    }
    PostMessageW(main_window(), WM_COMMAND, CMD_FOLLOW, 0);
    if (window == text_pane()) {
        hide_selection_once();
    }
    return true;
}

// True when the message is done with.
bool handle_first(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_LBUTTONDOWN:
        return swallow_press(lparam);
    case WM_LBUTTONDBLCLK:
        return swallow_double_click(window, lparam);
    case WM_CHAR:
        return is_control_character(wparam);
    default:
        return false;
    }
}

// A press brings its caret into view, and so does the release. The second press of a double click
// would then meet other words, and so the pane stays where it is.
LRESULT pass_on(WNDPROC previous, HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message != WM_LBUTTONDOWN && message != WM_LBUTTONUP) {
        return CallWindowProcW(previous, window, message, wparam, lparam);
    }
    const LRESULT top = sci(window, SCI_GETFIRSTVISIBLELINE);
    const LRESULT result = CallWindowProcW(previous, window, message, wparam, lparam);
    sci(window, SCI_SETFIRSTVISIBLELINE, top);
    return result;
}

// The cut that follows every change of the text pane would open an undo step inside the change.
LRESULT CALLBACK text_pane_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_CUT || handle_first(window, message, wparam, lparam)) {
        return 0;
    }
    return pass_on(input.text_previous, window, message, wparam, lparam);
}

LRESULT CALLBACK console_pane_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (handle_first(window, message, wparam, lparam)) {
        return 0;
    }
    return pass_on(input.console_previous, window, message, wparam, lparam);
}

// Scintilla gives many letters a meaning with Ctrl; here only the accelerators do.
void clear_letter_keys(HWND pane) {
    sci(pane, SCI_CLEARCMDKEY, SCK_INSERT);  // would switch to typing over
    for (LRESULT letter = 'A'; letter <= 'Z'; ++letter) {
        sci(pane, SCI_CLEARCMDKEY, letter | SCMOD_CTRL << 16);
        sci(pane, SCI_CLEARCMDKEY, letter | (SCMOD_CTRL | SCMOD_SHIFT) << 16);
    }
}

}  // namespace

void subclass_text_pane(HWND pane) {
    input.text_previous = subclass_window(pane, text_pane_proc);
    clear_letter_keys(pane);
}

void subclass_console_pane(HWND pane) {
    input.console_previous = subclass_window(pane, console_pane_proc);
    clear_letter_keys(pane);
}

void post_hot_spot_click(LRESULT position) {
    PostMessageW(main_window(), k_message_hot_spot, 0, position);
}

void hot_spot_arrived(LRESULT position) {
    ReleaseCapture();
    hot_spot_click(position);
}

void hot_spot_click(LRESULT position) {
    const char *name = word_at_position(position);
    const CellHandle cell = name != nullptr ? cell_lookup(name) : CellHandle{0};
    if (cell == 0 || cell == current_cell() || refused_while_busy()) {
        return;
    }
    if (active_pane() == k_pane_text) {
        hide_selection_once();
    }
    go_to_link(cell);
    input.just_left = true;
    input.left_at = GetTickCount();
}

const char *word_at_position(LRESULT position) {
    if (!active_pane_is_text()) {
        return nullptr;
    }
    HWND pane = active_pane_window();
    const LRESULT start = sci(pane, SCI_WORDSTARTPOSITION, position, 1);
    const LRESULT end = sci(pane, SCI_WORDENDPOSITION, position, 1);
    if (end - start > static_cast<LRESULT>(k_cellname_max)) {
        return nullptr;
    }
    memset(input.word, 0, sizeof input.word);
    Sci_TextRange range = {};
    range.chrg.cpMin = static_cast<Sci_PositionCR>(start);
    range.chrg.cpMax = static_cast<Sci_PositionCR>(end);
    range.lpstrText = input.word;
    return sci(pane, SCI_GETTEXTRANGE, 0, as_lparam(&range)) < 1 ? nullptr : input.word;
}

void hide_selection_once() {
    input.hidden = active_pane_window();
    sci(input.hidden, SCI_HIDESELECTION, 1);
}

void show_hidden_selection() {
    if (input.hidden == nullptr) {
        return;
    }
    sci(input.hidden, SCI_GOTOPOS, sci(input.hidden, SCI_GETCURRENTPOS));
    sci(input.hidden, SCI_HIDESELECTION, 0);
    input.hidden = nullptr;
}
