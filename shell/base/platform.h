// The system's headers as every shell source wants them, and what little of the system differs
// between the desktop and the handheld.
#pragma once

#include <windows.h>

#include <commctrl.h>

// Puts a window procedure before a control's own and returns the one it had, for CallWindowProcW.
inline WNDPROC subclass_window(HWND window, WNDPROC procedure) {
    return reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
}

// The answer of a dialog procedure to a message whose answer is not its result.
inline void set_dialog_answer(HWND dialog, LONG_PTR answer) {
    SetWindowLongPtrW(dialog, DWLP_MSGRESULT, answer);
}

// A pointer as a message parameter.
inline LPARAM as_lparam(const void *p) {
    return reinterpret_cast<LPARAM>(p);
}
