// Report output on its way into the console pane.
#include "core/host.h"

#include "shell/scintilla.h"
#include "shell/text_pane.h"

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
    sci(console, SCI_GOTOPOS, at + count);
}
