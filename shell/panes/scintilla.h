// The two text panes are Scintilla controls, driven by its messages alone.
#pragma once

#include "shell/platform.h"

#include <Scintilla.h>

// Messages of older components, which newer ones take no notice of.
constexpr UINT k_sci_set_lexer = 4001;
constexpr UINT k_sci_set_style_bits = 2090;

// Sends a message to a pane; 0 for a pane that could not be made.
inline LRESULT sci(HWND pane, UINT message, LRESULT wparam = 0, LPARAM lparam = 0) {
    return pane != nullptr ? SendMessageW(pane, message, static_cast<WPARAM>(wparam), lparam) : 0;
}

inline LRESULT sci_text(HWND pane, UINT message, LRESULT wparam, const char *text) {
    return sci(pane, message, wparam, as_lparam(text));
}
