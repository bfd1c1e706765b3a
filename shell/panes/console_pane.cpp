// Report output on its way into the console pane.
#include "shell/panes/console_pane.h"

#include "core/host_view.h"

#include "shell/panes/scintilla.h"
#include "shell/panes/text_pane.h"
#include "shell/panes/wrapping.h"

#include <cstring>

// Every insertion makes the pane work its scroll bar out and draw itself, which takes far longer
// than taking the text in: 3 ms where the engine sends 48 bytes at a time.
constexpr DWORD k_insert_milliseconds = 100;
constexpr uint32_t k_pending_max = 8192;

static struct ConsolePane {
    uint32_t position;  // where the pending bytes go
    uint32_t count;
    DWORD inserted_at;  // tick of the last insertion
    char pending[k_pending_max];
} state;

// Output cannot be undone. What the user deletes meanwhile makes the console shorter than the
// stream believes.
void console_show_pending() {
    if (state.count == 0) {
        return;
    }
    HWND console = console_pane();
    LRESULT length = sci(console, SCI_GETTEXTLENGTH);
    LRESULT at = state.position < length ? state.position : length;
    sci(console, SCI_SETUNDOCOLLECTION, 0);
    sci(console, SCI_SETTARGETSTART, at);
    sci(console, SCI_SETTARGETEND, at);
    sci_text(console, SCI_REPLACETARGET, state.count, state.pending);
    sci(console, SCI_SETUNDOCOLLECTION, 1);
    sci(console, SCI_EMPTYUNDOBUFFER);
    sci(console, SCI_GOTOPOS, at + state.count);
    pane_scroll_to_caret(console);
    state.count = 0;
    state.inserted_at = GetTickCount();
}

void console_clear() {
    state.count = 0;
    sci(console_pane(), SCI_CLEARALL);
    sci(console_pane(), SCI_EMPTYUNDOBUFFER);
}

void console_insert(uint32_t position, const char *bytes, uint32_t count) {
    if (position != state.position + state.count || count > k_pending_max - state.count) {
        console_show_pending();
    }
    if (state.count == 0) {
        state.position = position;
    }
    memcpy(state.pending + state.count, bytes, count);
    state.count += count;
    if (GetTickCount() - state.inserted_at > k_insert_milliseconds) {
        console_show_pending();
    }
}
