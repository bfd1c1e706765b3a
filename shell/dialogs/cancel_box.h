// The cancel box of a report that takes long, and the main window that a report to a file keeps
// from the user meanwhile.
#pragma once

#include "shell/base/platform.h"

// The box, or null. It takes part in the message loop.
HWND cancel_box();

// Output begins; true when the main window is to take no input until it is over.
void cancel_box_output_began(bool blocks_window);

// Shows the box once output has taken half a second, unless it has been given up.
void cancel_box_show_when_slow();

// The main window takes input again and the box goes away. Harmless when neither is needed.
void cancel_box_take_away();
