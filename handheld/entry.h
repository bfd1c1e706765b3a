// Named to the linker as the program's first function. The handheld's loader passes what WinMain
// gets elsewhere. It runs wWinMain() and ends the process with what that returns.
#pragma once

#include <windows.h>

// NOLINTNEXTLINE(readability-identifier-naming): the system's name
extern "C" [[noreturn]] void WinMainCRTStartup(HINSTANCE instance, HINSTANCE previous,
                                               LPWSTR command_line, int show);
