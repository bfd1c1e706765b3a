// Dialogs answered by a script: each answer waits for the next dialog or message box to open,
// checks that it is the one expected, and answers it.
#pragma once

#include "shell/base/platform.h"

#include <functional>
#include <string>
#include <vector>

// Presses the button when a box opens that has this text in its caption or in a static control.
void answer(const std::string &text, int button);

// Does something with the dialog that opens next; `act` must end it or press a button.
void answer_with(const std::string &text, std::function<void(HWND dialog)> act);

// Presses the button in every box with this text, whenever one opens, until answers_begin().
void answer_always(const std::string &text, int button);

// True when every answer was asked for. Forgets those that were not.
bool all_asked();

// The texts of the dialogs that no answer was waiting for, since the last call: they were
// cancelled.
std::string unexpected_dialogs();

void answers_begin();
void answers_end();

// The dialog or message box that takes input, or null.
HWND open_dialog();

// A real press of a dialog's button, from within the dialog's message loop.
void press_button(HWND dialog, int button);

// All windows in a window, those of its controls too.
std::vector<HWND> controls_of(HWND window);

std::wstring class_of(HWND window);
