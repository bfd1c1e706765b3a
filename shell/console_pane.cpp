// Report output on its way into the console pane.
#include "shell/console_pane.h"

#include "core/host.h"

#include "shell/pane_wrapping.h"
#include "shell/scintilla.h"
#include "shell/text_pane.h"

static struct ConsolePane {
    LRESULT end;        // of the output so far
    bool behind;        // the caret is not there yet
    DWORD followed_at;  // tick at which it was brought there last
} state;

namespace {

// Scrolling makes the pane draw itself, which takes far longer than taking the text in.
constexpr DWORD k_follow_milliseconds = 100;

}  // namespace

void console_follow_output() {
    if (!state.behind) {
        return;
    }
    state.behind = false;
    state.followed_at = GetTickCount();
    sci(console_pane(), SCI_GOTOPOS, state.end);
    pane_scroll_to_caret(console_pane());
}

void console_clear() {
    sci(console_pane(), SCI_CLEARALL);
    sci(console_pane(), SCI_EMPTYUNDOBUFFER);
}

// Output cannot be undone. What the user deletes meanwhile makes the console shorter than the
// stream believes.
void console_insert(uint32_t position, const char *bytes, uint32_t count) {
    HWND console = console_pane();
    LRESULT length = sci(console, SCI_GETTEXTLENGTH);
    LRESULT at = position < length ? position : length;
    sci(console, SCI_SETUNDOCOLLECTION, 0);
    sci(console, SCI_SETTARGETSTART, at);
    sci(console, SCI_SETTARGETEND, at);
    sci_text(console, SCI_REPLACETARGET, count, bytes);
    sci(console, SCI_SETUNDOCOLLECTION, 1);
    sci(console, SCI_EMPTYUNDOBUFFER);
    state.end = at + count;
    state.behind = true;
    if (GetTickCount() - state.followed_at > k_follow_milliseconds) {
        console_follow_output();
    }
}
