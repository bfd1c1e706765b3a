// The text selected in the active pane.
#include "core/host_view.h"

#include "shell/panes/scintilla.h"
#include "shell/views.h"

#include <cstdlib>

static struct Selection {
    char *bytes;  // as long as somebody uses it
} selection;

const char *selected_text() {
    selected_text_free();
    if (!active_pane_is_text() || active_pane_window() == nullptr) {
        return "";
    }
    HWND pane = active_pane_window();
    LRESULT start = sci(pane, SCI_GETSELECTIONSTART);
    LRESULT end = sci(pane, SCI_GETSELECTIONEND);
    // A rectangular selection has a line end behind each of its lines, so the pane is asked.
    LRESULT length = sci(pane, SCI_GETSELTEXT);
    LRESULT size = (length > end - start ? length : end - start) + 8;
    selection.bytes = static_cast<char *>(calloc(1, static_cast<size_t>(size)));
    if (selection.bytes == nullptr) {
        short_on_memory_offer();
        return "";
    }
    sci_text(pane, SCI_GETSELTEXT, 0, selection.bytes);
    return selection.bytes;
}

void selected_text_free() {
    free(selection.bytes);
    selection.bytes = nullptr;
}
