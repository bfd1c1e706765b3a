// Where Quorvane.exe begins on the handheld. There is nothing to construct: the build fails when a
// global wants to be.
#include "handheld/entry.h"

#include <cstdint>

namespace {

// The system knows the process that asks by this number.
constexpr uintptr_t k_this_process = 66;

}  // namespace

void WinMainCRTStartup(HINSTANCE instance, HINSTANCE previous, LPWSTR command_line, int show) {
    const int status = wWinMain(instance, previous, command_line, show);
    TerminateProcess(reinterpret_cast<HANDLE>(k_this_process), static_cast<UINT>(status));
    for (;;) {
    }
}
