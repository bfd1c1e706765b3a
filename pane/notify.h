// What a pane tells its parent: notifications by WM_NOTIFY, and the older codes by WM_COMMAND.
#pragma once

#include "pane/pane.h"

#include <Scintilla.h>

// Sends a notification; the header is filled in here.
void notify(const Pane *pane, UINT code, SCNotification *event);

// Those that say no more than their code, or a position and the keys that are held.
void notify_plain(const Pane *pane, UINT code);
void notify_at(const Pane *pane, UINT code, uint32_t position, int modifiers);

// SCEN_... by WM_COMMAND.
void notify_command(const Pane *pane, WORD code);

// The document has changed: SCEN_CHANGE and SCN_MODIFIED, as far as the parent wants to know.
void notify_change(const Pane *pane, const Change &change);

// Asks the parent for the styles up to a position, if they are not right.
void need_styles(Pane *pane, uint32_t end);
