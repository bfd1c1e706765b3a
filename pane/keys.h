// What keys do. One table, in Scintilla's numbers for keys, their modifiers and the commands.
#pragma once

#include "pane/pane.h"

// WM_KEYDOWN: does what the key stands for; false when it stands for nothing.
bool key_down(Pane *pane, WPARAM key);

// SCI_CLEARCMDKEY: a key with its modifiers does nothing any more.
void key_clear(Pane *pane, uint32_t definition);

// SCMOD_... of the keys that are held.
int key_modifiers();
