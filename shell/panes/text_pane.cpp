#include "shell/panes/text_pane.h"

#include "core/errors.h"
#include "core/host_view.h"
#include "core/text.h"
#include "resources/resource.h"
#include "shell/base/focus.h"
#include "shell/base/handles.h"
#include "shell/base/scratch.h"
#include "shell/panes/input.h"
#include "shell/panes/scintilla.h"
#include "shell/panes/styles.h"
#include "shell/panes/wrapping.h"
#include "web/cell_text.h"
#include "web/changed.h"
#include "web/options.h"
#include "web/record.h"
#include "web/trail.h"

#include <cstring>

static struct TextPane {
    CellHandle cell;  // whose text the pane holds; 0: nobody's
} pane;

namespace {

HWND create_pane(HWND parent, int id) {
    return CreateWindowExW(
        0, L"Scintilla", L"", static_cast<DWORD>(WS_CHILD | WS_VISIBLE | WS_VSCROLL), 0, 0, 0, 0,
        parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), program_instance(), nullptr);
}

bool is_modified() {
    return sci(text_pane(), SCI_GETMODIFY) != 0;
}

uint32_t length_of(HWND window) {
    return static_cast<uint32_t>(sci(window, SCI_GETTEXTLENGTH));
}

// The pane's text as it is stored, without NUL, in the scratch block. Null when there is no memory.
const char *take_text(uint32_t *length) {
    const uint32_t n = length_of(text_pane());
    char *bytes = scratch_reserve(n + 8);
    if (bytes == nullptr) {
        return nullptr;
    }
    sci_text(text_pane(), SCI_GETTEXT, static_cast<LRESULT>(n) + 7, bytes);
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
    sci(text_pane(), SCI_SETSAVEPOINT);
}

void store_view(CellHandle cell) {
    const ViewState view = {
        static_cast<int32_t>(sci(text_pane(), SCI_GETFIRSTVISIBLELINE)),
        static_cast<int32_t>(sci(text_pane(), SCI_GETSELECTIONSTART)),
        static_cast<int32_t>(sci(text_pane(), SCI_GETSELECTIONEND)),
    };
    cell_store_view(cell, &view);
}

// Stores a modified pane before it is loaded anew. False when its text does not fit: it is then the
// only copy.
bool safe_to_load() {
    if (!is_modified() || pane.cell == 0 || pane.cell != current_cell()) {
        return true;
    }
    if (!cell_text_fits(pane.cell, length_of(text_pane()))) {
        return false;
    }
    store_text(pane.cell);
    store_view(pane.cell);
    return true;
}

bool pane_shows(const char *bytes, uint32_t length) {
    const char *shown = reinterpret_cast<const char *>(sci(text_pane(), SCI_GETCHARACTERPOINTER));
    return length_of(text_pane()) == length && shown != nullptr &&
           memcmp(shown, bytes, length) == 0;
}

void load_text(CellHandle cell, const char *bytes) {
    sci_text(text_pane(), SCI_SETTEXT, 0, bytes);
    sci(text_pane(), SCI_EMPTYUNDOBUFFER);
    sci(text_pane(), SCI_SETSAVEPOINT);
    const ViewState view = cell != 0 ? cell_view(cell) : ViewState{0, 0, 0};
    sci(text_pane(), SCI_SETSEL, view.selection_start, view.selection_end);
    pane_scroll_to_caret(text_pane());
}

// Where the same cell's text is there already it stays, and with it what can be undone.
void show_current_text() {
    const CellHandle cell = current_cell();
    const BlockHandle text = cell != 0 ? cell_text(cell) : BlockHandle{0};
    const uint32_t length = text_size(text);
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
    register_pane(k_pane_text, create_pane(parent, CTL_TEXT_PANE));
    if (text_pane() != nullptr) {
        subclass_text_pane(text_pane());
        configure_text_pane();
    }
}

void console_pane_create(HWND parent) {
    register_pane(k_pane_console, create_pane(parent, CTL_CONSOLE_PANE));
    if (console_pane() != nullptr) {
        subclass_console_pane(console_pane());
        configure_console_pane();
    }
}

void apply_zoom() {
    sci(text_pane(), SCI_SETZOOM, option_zoom());
    sci(console_pane(), SCI_SETZOOM, option_zoom());
}

CellHandle text_pane_cell() {
    return pane.cell;
}

// The cut takes nothing away: the pane swallows it.
void text_pane_changed() {
    set_web_changed(true);
    SendMessageW(text_pane(), WM_CUT, 0, 0);
}

CellHandle store_text_pane(int mode) {
    const CellHandle cell = current_cell();
    if (mode == 1 && text_pane() != nullptr && cell != 0 && cell == pane.cell) {
        if (is_modified()) {
            store_text(cell);
        }
        store_view(cell);
    }
    return cell;
}

void show_cell_text() {
    if (text_pane() != nullptr && safe_to_load()) {
        show_current_text();
    }
}

void text_pane_forget_cell() {
    pane.cell = 0;
}

void hide_text_caret() {
    HideCaret(text_pane());
}
