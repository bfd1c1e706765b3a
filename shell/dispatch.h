// What becomes of one message: for the message loop, and for a report that lets messages through.
#pragma once

#include "shell/base/platform.h"

// Loads the accelerators; before that no key is one.
void load_accelerators();

// Offers the message to the modeless dialogs and the accelerators, else sends it on; not for
// WM_QUIT.
void process_message(MSG *message);
