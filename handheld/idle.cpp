// What the message loop does when the queue is empty, on the handheld.
#include "desktop/frame.h"

#include <windows.h>

constexpr DWORD k_idle_milliseconds = 15;

// A loop that asked on and on would keep the processor from resting, and empty the battery.
void desktop_idle() {
    MsgWaitForMultipleObjectsEx(0, nullptr, k_idle_milliseconds, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}
