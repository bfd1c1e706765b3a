#include "shell/panes/wrapping.h"

#include "shell/panes/scintilla.h"

struct Collapsed {
    bool collapsed;
    bool caret_moved;    // show the caret, not the line
    LRESULT first_line;  // of the text, at the top when it was collapsed
};

static struct PaneWrapping {
    Collapsed text;
    Collapsed console;
} wrapping;

namespace {

Collapsed *state_of(HWND pane) {
    return pane == text_pane() ? &wrapping.text : &wrapping.console;
}

// The end of the console's output comes to the middle of the pane; the user's own caret moves the
// console only when it leaves it.
constexpr LRESULT k_output_policy = CARET_STRICT | CARET_EVEN;
constexpr LRESULT k_resting_policy = CARET_EVEN;

void set_console_policy(HWND pane, LRESULT policy) {
    if (pane == console_pane()) {
        sci(pane, SCI_SETYCARETPOLICY, policy);
    }
}

// A pane breaks its lines when it is drawn or idle, which moves the caret's line down. Asked for a
// line, it breaks all of them first.
void show_caret(HWND pane) {
    const LRESULT caret = sci(pane, SCI_GETCURRENTPOS);
    if (caret > 0) {
        sci(pane, SCI_ENSUREVISIBLE, sci(pane, SCI_LINEFROMPOSITION, caret));
    }
    set_console_policy(pane, k_output_policy);
    sci(pane, SCI_SCROLLCARET);
    set_console_policy(pane, k_resting_policy);
}

}  // namespace

void pane_collapsing(HWND pane) {
    Collapsed *state = state_of(pane);
    if (!state->collapsed) {
        state->collapsed = true;
        state->caret_moved = false;
        state->first_line = sci(pane, SCI_DOCLINEFROMVISIBLE, sci(pane, SCI_GETFIRSTVISIBLELINE));
    }
    sci(pane, SCI_SETWRAPMODE, SC_WRAP_NONE);
}

void pane_expanded(HWND pane) {
    Collapsed *state = state_of(pane);
    if (!state->collapsed) {
        return;
    }
    state->collapsed = false;
    // Until the pane has been idle, its lines are still broken as they were before.
    sci(pane, SCI_SETFIRSTVISIBLELINE, sci(pane, SCI_VISIBLEFROMDOCLINE, state->first_line));
    sci(pane, SCI_SETWRAPMODE, SC_WRAP_WORD);
    if (state->caret_moved) {
        show_caret(pane);
    }
}

void pane_scroll_to_caret(HWND pane) {
    Collapsed *state = state_of(pane);
    state->caret_moved = true;
    if (!state->collapsed) {
        show_caret(pane);
    }
}
