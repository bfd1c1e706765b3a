// What a desktop's window does between messages and the handheld's does not.
#include "desktop/frame.h"

// The loop polls for as long as the program runs: the system gives the processor to whoever needs
// it, and the second's work is on time whether messages come or not.
void desktop_idle() {}
