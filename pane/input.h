// Characters that come from the keyboard, the input panel or an input method.
#pragma once

#include "pane/pane.h"

// WM_CHAR: a unit of UTF-16.
void input_character(Pane *pane, wchar_t unit);

// WM_IME_STARTCOMPOSITION: the input method's window belongs to the caret.
void input_place_composition(Pane *pane);

// WM_IME_COMPOSITION: takes the result, if there is one; says so.
bool input_take_result(Pane *pane, LPARAM what);
