// Window procedures that reach the engine run it here.
#pragma once

// Runs body(argument) under a recovery point of its own. When the blocks run out the program is
// brought back, the user sees "OUT OF MEMORY", and the result is false.
bool run_guarded(void (*body)(void *argument), void *argument);
