// QuorvaneOpen.exe FILE: opens a web that was clicked in the file explorer. Quorvane.exe reads no
// more than 62 characters of its command line, and most paths are longer, so it is started in the
// file's folder and given the bare name.
#include <windows.h>

// Characters of a path, and of a command line.
constexpr DWORD k_longest = 32768;

static struct Opening {
    wchar_t path[k_longest];  // of the web; later of its folder
    wchar_t name[MAX_PATH];
    wchar_t program[MAX_PATH];
    wchar_t command[MAX_PATH * 2];
} opening;

namespace {

// The path on the command line, without the quotes.
void find_path() {
    const wchar_t *line = GetCommandLineW();
    bool quoted = false;
    for (; *line != 0 && (quoted || *line > L' '); ++line) {
        quoted = *line == L'"' ? !quoted : quoted;
    }
    DWORD length = 0;
    for (; *line != 0 && length + 1 < k_longest; ++line) {
        if (*line != L'"' && (length > 0 || *line > L' ')) {
            opening.path[length++] = *line;
        }
    }
}

// Where the name begins behind the folder.
wchar_t *name_in(wchar_t *path) {
    wchar_t *name = path;
    for (wchar_t *at = path; *at != 0; ++at) {
        name = *at == L'\\' || *at == L'/' ? at + 1 : name;
    }
    return name;
}

void cut_name() {
    wchar_t *name = name_in(opening.path);
    lstrcpynW(opening.name, name, MAX_PATH);
    *name = 0;
}

bool start_beside() {
    GetModuleFileNameW(nullptr, opening.program, MAX_PATH);
    lstrcpynW(name_in(opening.program), L"Quorvane.exe", 13);
    lstrcpyW(opening.command, L"Quorvane ");
    lstrcatW(opening.command, opening.name);
    const wchar_t *folder = opening.path[0] != 0 ? opening.path : nullptr;
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    return CreateProcessW(opening.program, opening.command, nullptr, nullptr, FALSE, 0, nullptr,
                          folder, &start, &process) != 0;
}

}  // namespace

// Only the linker calls it, by name.
extern "C" [[noreturn]] void open_web() {
    find_path();
    cut_name();
    const bool started = start_beside();
    if (!started) {
        MessageBoxW(nullptr, L"Quorvane.exe could not be started.", L"Quorvane", MB_ICONERROR);
    }
    ExitProcess(started ? 0 : 1);
}
