// The text selected in the active pane.
#include "core/host_view.h"

#include "shell/base/buffer.h"
#include "shell/base/focus.h"
#include "shell/panes/scintilla.h"

static struct Selection {
    Buffer buffer;  // as long as somebody uses it
} selection;

const char *selected_text() {
    selected_text_free();
    if (!active_pane_is_text() || active_pane_window() == nullptr) {
        return "";
    }
    HWND pane = active_pane_window();
    const LRESULT start = sci(pane, SCI_GETSELECTIONSTART);
    const LRESULT end = sci(pane, SCI_GETSELECTIONEND);
    // A rectangular selection has a line end behind each of its lines, so the pane is asked.
    const LRESULT length = sci(pane, SCI_GETSELTEXT);
    const LRESULT size = (length > end - start ? length : end - start) + 8;
    char *bytes = buffer_reserve(&selection.buffer, static_cast<uint32_t>(size));
    if (bytes == nullptr) {
        short_on_memory_offer();
        return "";
    }
    *bytes = 0;
    sci_text(pane, SCI_GETSELTEXT, 0, bytes);
    return bytes;
}

void selected_text_free() {
    buffer_free(&selection.buffer);
}
