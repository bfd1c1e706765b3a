// Named to the linker as the program's first function. It runs wWinMain() and ends the process with
// what that returns.
#pragma once

extern "C" [[noreturn]] void desktop_entry();
