// How long a key takes in a long text, with any SciLexer.dll: pane_keys DLL LINE_LENGTH
//
// Types letters into the middle of 345,000 characters, in lines of a length or, with 0, without a
// line end. Each is drawn, and its styles given, before the clock stops. Prints the least and the
// median in ms.
#include <windows.h>

#include <Scintilla.h>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

constexpr size_t k_length = 345000;  // of the text; as long as the arena can hold
constexpr int k_width = 600;
constexpr int k_height = 400;

LRESULT style_all(HWND pane, LRESULT end) {
    const LRESULT styled = SendMessageW(pane, SCI_GETENDSTYLED, 0, 0);
    SendMessageW(pane, SCI_STARTSTYLING, static_cast<WPARAM>(styled), 0);
    return SendMessageW(pane, SCI_SETSTYLING, static_cast<WPARAM>(end - styled), 0);
}

LRESULT CALLBACK frame_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_NOTIFY) {
        const auto *event = reinterpret_cast<const SCNotification *>(lparam);
        return event->nmhdr.code == SCN_STYLENEEDED
                   ? style_all(static_cast<HWND>(event->nmhdr.hwndFrom), event->position)
                   : 0;
    }
    return DefWindowProcW(window, message, wparam, lparam);
}

HWND open_pane() {
    WNDCLASSW description = {};
    description.lpfnWndProc = frame_proc;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = L"PaneKeys";
    RegisterClassW(&description);
    HWND frame = CreateWindowExW(0, L"PaneKeys", L"", WS_POPUP | WS_VISIBLE, 10, 10, k_width,
                                 k_height, nullptr, nullptr, description.hInstance, nullptr);
    return CreateWindowExW(0, L"Scintilla", L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL, 0, 0, k_width,
                           k_height, frame, nullptr, description.hInstance, nullptr);
}

std::string long_text(size_t line_length) {
    std::string text;
    while (text.size() < k_length) {
        text += "a word of text ";
        if (line_length > 0 && text.size() % (line_length + 2) > line_length) {
            text += "\r\n";
        }
    }
    return text;
}

// Lets the component do what it has put off.
void pump(HWND pane) {
    MSG message;
    for (int still = 0; still < 20; ++still) {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
            DispatchMessageW(&message);
        }
        Sleep(5);
    }
    UpdateWindow(pane);
}

double key(HWND pane, WPARAM letter) {
    LARGE_INTEGER before;
    LARGE_INTEGER after;
    LARGE_INTEGER second;
    QueryPerformanceFrequency(&second);
    QueryPerformanceCounter(&before);
    SendMessageW(pane, WM_CHAR, letter, 0);
    UpdateWindow(pane);
    QueryPerformanceCounter(&after);
    return static_cast<double>(after.QuadPart - before.QuadPart) * 1000 /
           static_cast<double>(second.QuadPart);
}

}  // namespace

int main(int argc, char **argv) {
    HWND pane = argc == 3 && LoadLibraryA(argv[1]) != nullptr ? open_pane() : nullptr;
    if (pane == nullptr) {
        fprintf(stderr, "usage: pane_keys DLL LINE_LENGTH\n");
        return 2;
    }
    const std::string text = long_text(strtoul(argv[2], nullptr, 10));
    SendMessageW(pane, SCI_SETCODEPAGE, SC_CP_UTF8, 0);
    SendMessageW(pane, SCI_SETWRAPMODE, SC_WRAP_WORD, 0);
    SendMessageW(pane, SCI_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    SendMessageW(pane, SCI_GOTOPOS, text.size() / 2, 0);
    SetFocus(pane);
    pump(pane);
    key(pane, 'a');  // the first one brings up what stays
    std::array<double, 51> times;
    for (double &time : times) {
        pump(pane);
        time = key(pane, 'b');
    }
    std::sort(times.begin(), times.end());
    printf("%.2f %.2f\n", times.front(), times[times.size() / 2]);
    return 0;
}
