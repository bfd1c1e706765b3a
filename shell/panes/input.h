// What the text panes do with the mouse and the keys before Scintilla sees them: hot spots, double
// clicks, control characters.
#pragma once

#include "shell/base/platform.h"

#include <cstdint>

void subclass_text_pane(HWND pane);
void subclass_console_pane(HWND pane);

// SCN_HOTSPOTCLICK from a pane: Scintilla is still busy with the press, so the click is handled
// when the message posted here arrives.
void post_hot_spot_click(LRESULT position);

// k_message_hot_spot.
void hot_spot_arrived(LRESULT position);

// Goes to the cell that the word at a position of the active pane names, if any.
void hot_spot_click(LRESULT position);

// The word at a position of the active pane, in one static buffer; null when there is none or it is
// longer than 48 characters.
const char *word_at_position(LRESULT position);

// Hides the active pane's selection until the next restyling.
void hide_selection_once();

// Shows a hidden selection again, collapsed, on the pane where it was hidden.
void show_hidden_selection();
