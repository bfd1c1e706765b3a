// The program's beginning and end.
#include "core/host_messages.h"

#include "shell/main_window.h"
#include "shell/message_loop.h"

// Nothing needs to be put in order: a file that is open now is one that must not be completed.
void end_program(int status) {
    DWORD process = 0;
    GetWindowThreadProcessId(main_window(), &process);
    if (process != 0) {
        TerminateProcess(OpenProcess(PROCESS_TERMINATE, FALSE, process), static_cast<UINT>(status));
    }
    ExitThread(static_cast<DWORD>(status));
    for (;;) {
    }
}

// NOLINTNEXTLINE(readability-identifier-naming): the system's name
int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR command_line, int show) {
    return run_message_loop(instance, command_line, show);
}
