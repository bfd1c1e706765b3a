// The system's clipboard, as text in UTF-16; panes hold UTF-8.
#pragma once

#include "pane/pane.h"

void clipboard_cut(Pane *pane);
void clipboard_copy(Pane *pane);

// Line ends become CR LF.
void clipboard_paste(Pane *pane);

bool clipboard_has_text();

void clipboard_put(const Pane *pane, const char *bytes, uint32_t length);
