// Report output on its way into the console pane.
#include "shell/panes/console_pane.h"

#include "core/host_view.h"

#include "shell/panes/scintilla.h"
#include "shell/panes/wrapping.h"

#include <cstring>

// Every insertion makes the pane work its scroll bar out and draw itself, which takes far longer
// than taking the text in: 3 ms where the engine sends 48 bytes at a time.
constexpr DWORD k_insert_milliseconds = 100;
constexpr uint32_t k_pending_max = 8192;
static_assert(k_pending_max >= k_console_insert_max);

static struct ConsolePane {
    uint32_t position;  // where the pending bytes go
    uint32_t count;
    DWORD inserted_at;  // tick of the last insertion
    char pending[k_pending_max];
} console;

// Output cannot be undone. What the user deletes meanwhile makes the console shorter than the
// stream believes.
void console_show_pending() {
    if (console.count == 0) {
        return;
    }
    HWND pane = console_pane();
    const LRESULT length = sci(pane, SCI_GETTEXTLENGTH);
    const LRESULT count = static_cast<LRESULT>(console.count);
    const LRESULT wanted = static_cast<LRESULT>(console.position);
    const LRESULT at = wanted < length ? wanted : length;
    sci(pane, SCI_SETUNDOCOLLECTION, 0);
    sci(pane, SCI_SETTARGETSTART, at);
    sci(pane, SCI_SETTARGETEND, at);
    sci_text(pane, SCI_REPLACETARGET, count, console.pending);
    sci(pane, SCI_SETUNDOCOLLECTION, 1);
    sci(pane, SCI_EMPTYUNDOBUFFER);
    sci(pane, SCI_GOTOPOS, at + count);
    pane_scroll_to_caret(pane);
    console.count = 0;
    console.inserted_at = GetTickCount();
}

void console_clear() {
    console.count = 0;
    sci(console_pane(), SCI_CLEARALL);
    sci(console_pane(), SCI_EMPTYUNDOBUFFER);
}

void console_insert(uint32_t position, const char *bytes, uint32_t count) {
    if (position != console.position + console.count || count > k_pending_max - console.count) {
        console_show_pending();
    }
    if (console.count == 0) {
        console.position = position;
    }
    memcpy(console.pending + console.count, bytes, count);
    console.count += count;
    if (GetTickCount() - console.inserted_at > k_insert_milliseconds) {
        console_show_pending();
    }
}
