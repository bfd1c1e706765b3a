// Where Quorvane.exe begins on desktop Windows. A handheld starts programs by WinMain itself; here
// the C library would, and put in order much that this program has no use for: it has no objects to
// construct, no console and no arguments but the one line.
#include "desktop/entry.h"

#include <windows.h>

namespace {

// What stands behind the program's own name, which may be quoted.
LPWSTR behind_program_name(LPWSTR line) {
    bool quoted = false;
    while (*line != 0 && (quoted || *line > L' ')) {
        quoted = *line == L'"' ? !quoted : quoted;
        ++line;
    }
    while (*line != 0 && *line <= L' ') {
        ++line;
    }
    return line;
}

}  // namespace

// Only the linker calls it, by name.
[[gnu::externally_visible]] void desktop_entry() {
    const int status = wWinMain(GetModuleHandleW(nullptr), nullptr,
                                behind_program_name(GetCommandLineW()), SW_SHOWDEFAULT);
    ExitProcess(static_cast<UINT>(status));
}
