// The messages of the interface: SCI_... and what to do, in one table.
#pragma once

#include "pane/pane.h"

// Does what a message asks for; false when it is none that this component knows.
bool handle_message(Pane *pane, UINT message, WPARAM wparam, LPARAM lparam, LRESULT *result);
