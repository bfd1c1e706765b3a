// Report output seen from the window: the cancel box, the messages let through, and quitting in the
// middle. pump_messages(), output_began() and output_ended() are those of core/host_messages.h.
#pragma once

#include "shell/platform.h"

// The cancel box, or null.
HWND cancel_box();

// Ends the report under way; the program is then asked to quit again. False when no output is under
// way.
bool quit_after_output();
