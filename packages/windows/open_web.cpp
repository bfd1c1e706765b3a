// QuorvaneOpen.exe FILE: opens a web that was clicked in the file explorer. Quorvane.exe reads no more
// than 62 characters of its command line, and most paths are longer, so it is started in the file's
// folder and given the bare name.
#include <windows.h>

namespace {

constexpr DWORD k_longest = 32768;  // characters of a path

wchar_t path[k_longest];
wchar_t program[k_longest];
wchar_t command[k_longest];

// The path on the command line, without the quotes.
bool find_path() {
    const wchar_t *line = GetCommandLineW();
    bool quoted = false;
    for (; *line != 0 && (quoted || *line > L' '); ++line) {
        quoted = *line == L'"' ? !quoted : quoted;
    }
    DWORD length = 0;
    for (; *line != 0; ++line) {
        if (*line != L'"' && (length > 0 || *line > L' ')) {
            path[length++] = *line;
        }
    }
    return length > 0;
}

// Ends a path behind its folder; returns the name that stood there.
const wchar_t *cut_name(wchar_t *whole) {
    wchar_t *name = whole;
    for (wchar_t *at = whole; *at != 0; ++at) {
        name = *at == L'\\' || *at == L'/' ? at + 1 : name;
    }
    static wchar_t kept[MAX_PATH];
    lstrcpynW(kept, name, MAX_PATH);
    *name = 0;
    return kept;
}

bool start_beside(const wchar_t *name) {
    lstrcatW(program, L"Quorvane.exe");
    lstrcpyW(command, L"\"");
    lstrcatW(command, program);
    lstrcatW(command, L"\" ");
    lstrcatW(command, name);
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    return CreateProcessW(program, command, nullptr, nullptr, FALSE, 0, nullptr,
                          path[0] != 0 ? path : nullptr, &start, &process) != 0;
}

}  // namespace

// Only the linker calls it, by name.
extern "C" [[noreturn]] void open_web() {
    const wchar_t *name = find_path() ? cut_name(path) : L"";
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    cut_name(program);
    const bool started = start_beside(name);
    if (!started) {
        MessageBoxW(nullptr, L"Quorvane.exe could not be started.", L"Quorvane", MB_ICONERROR);
    }
    ExitProcess(started ? 0 : 1);
}
