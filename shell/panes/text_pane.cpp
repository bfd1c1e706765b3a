#include "shell/panes/text_pane.h"

#include "core/errors.h"
#include "core/host_view.h"
#include "core/text.h"
#include "resources/resource.h"
#include "shell/cellname_box.h"
#include "shell/main_window.h"
#include "shell/panes/input.h"
#include "shell/panes/scintilla.h"
#include "shell/panes/styles.h"
#include "shell/panes/wrapping.h"
#include "shell/scratch.h"
#include "shell/views.h"
#include "web/cell_text.h"
#include "web/cells.h"
#include "web/options.h"
#include "web/trail.h"

#include <cstring>

static struct TextPane {
    HWND window;
    HWND console;
    CellHandle cell;  // whose text the pane holds; 0: nobody's
} pane;

namespace {

HWND create_pane(HWND parent, int id) {
    return CreateWindowExW(
        0, L"Scintilla", L"", static_cast<DWORD>(WS_CHILD | WS_VISIBLE | WS_VSCROLL), 0, 0, 0, 0,
        parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), program_instance(), nullptr);
}

bool is_modified() {
    return sci(pane.window, SCI_GETMODIFY) != 0;
}

uint32_t length_of(HWND window) {
    return static_cast<uint32_t>(sci(window, SCI_GETTEXTLENGTH));
}

// The pane's text as it is stored, without NUL, in the scratch block. Null when there is no memory.
const char *take_text(uint32_t *length) {
    uint32_t n = length_of(pane.window);
    char *bytes = scratch_reserve(n + 8);
    if (bytes == nullptr) {
        return nullptr;
    }
    sci_text(pane.window, SCI_GETTEXT, n + 7, bytes);
    *length = 0;
    for (uint32_t i = 0; i < n; ++i) {
        if (bytes[i] != 0) {
            bytes[(*length)++] = bytes[i];
        }
    }
    return bytes;
}

// Leaves through the recovery point when the text does not fit; the pane then stays modified.
void store_text(CellHandle cell) {
    uint32_t length = 0;
    const char *bytes = take_text(&length);
    if (bytes == nullptr) {
        run_out_of_blocks();
    }
    cell_replace_text(cell, bytes, length);
    sci(pane.window, SCI_SETSAVEPOINT);
}

void store_view(CellHandle cell) {
    ViewState view = {
        static_cast<int32_t>(sci(pane.window, SCI_GETFIRSTVISIBLELINE)),
        static_cast<int32_t>(sci(pane.window, SCI_GETSELECTIONSTART)),
        static_cast<int32_t>(sci(pane.window, SCI_GETSELECTIONEND)),
    };
    cell_store_view(cell, &view);
}

// Stores a modified pane before it is loaded anew. False when its text does not fit: it is then the
// only copy.
bool safe_to_load() {
    if (!is_modified() || pane.cell == 0 || pane.cell != current_cell()) {
        return true;
    }
    if (!cell_text_fits(pane.cell, length_of(pane.window))) {
        return false;
    }
    store_text(pane.cell);
    store_view(pane.cell);
    return true;
}

bool pane_shows(const char *bytes, uint32_t length) {
    const char *shown = reinterpret_cast<const char *>(sci(pane.window, SCI_GETCHARACTERPOINTER));
    return length_of(pane.window) == length && shown != nullptr &&
           memcmp(shown, bytes, length) == 0;
}

void load_text(CellHandle cell, const char *bytes) {
    sci_text(pane.window, SCI_SETTEXT, 0, bytes);
    sci(pane.window, SCI_EMPTYUNDOBUFFER);
    sci(pane.window, SCI_SETSAVEPOINT);
    ViewState view = cell != 0 ? cell_view(cell) : ViewState{0, 0, 0};
    sci(pane.window, SCI_SETSEL, view.selection_start, view.selection_end);
    pane_scroll_to_caret(pane.window);
}

// Where the same cell's text is there already it stays, and with it what can be undone.
void show_cell_text() {
    CellHandle cell = current_cell();
    BlockHandle text = cell != 0 ? cell_text(cell) : BlockHandle{0};
    uint32_t length = text_size(text);
    char *bytes = scratch_reserve(length + 8);
    if (bytes == nullptr) {
        show_error(k_out_of_memory);
        return;
    }
    text_copy_out(bytes, text, length);
    if (pane.cell == 0 || pane.cell != cell || !pane_shows(bytes, length)) {
        load_text(cell, bytes);
    }
    pane.cell = cell;
}

}  // namespace

void text_pane_create(HWND parent) {
    pane.cell = 0;
    pane.window = create_pane(parent, CTL_TEXT_PANE);
    register_pane(k_pane_text, pane.window);
    if (pane.window != nullptr) {
        subclass_text_pane(pane.window);
        configure_text_pane();
    }
}

void console_pane_create(HWND parent) {
    pane.console = create_pane(parent, CTL_CONSOLE_PANE);
    register_pane(k_pane_console, pane.console);
    if (pane.console != nullptr) {
        subclass_console_pane(pane.console);
        configure_console_pane();
    }
}

HWND text_pane() {
    return pane.window;
}

HWND console_pane() {
    return pane.console;
}

void apply_zoom() {
    sci(pane.window, SCI_SETZOOM, option_zoom());
    sci(pane.console, SCI_SETZOOM, option_zoom());
}

CellHandle text_pane_cell() {
    return pane.cell;
}

// The cut takes nothing away: the pane swallows it.
void text_pane_changed() {
    set_web_changed(true);
    SendMessageW(pane.window, WM_CUT, 0, 0);
}

CellHandle store_text_pane(int mode) {
    CellHandle cell = current_cell();
    if (mode == 1 && pane.window != nullptr && cell != 0 && cell == pane.cell) {
        if (is_modified()) {
            store_text(cell);
        }
        store_view(cell);
    }
    return cell;
}

void refresh_current_view() {
    bool changed = web_changed();
    cellname_box_show_current();
    if (pane.window != nullptr && safe_to_load()) {
        show_cell_text();
    }
    set_web_changed(changed);
}

void refresh_views() {
    pane.cell = 0;
    apply_pane_styles(pane.window);
    apply_pane_styles(pane.console);
    apply_zoom();
    cell_list_clear();
    cell_list_fill();
    refresh_current_view();
}

void hide_text_caret() {
    HideCaret(pane.window);
}
