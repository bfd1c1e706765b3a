#include "shell/base/handles.h"

static struct Handles {
    HINSTANCE instance;
    HWND window;
} handles;

HINSTANCE program_instance() {
    return handles.instance;
}

void set_program_instance(HINSTANCE instance) {
    handles.instance = instance;
}

HWND main_window() {
    return handles.window;
}

void set_main_window(HWND window) {
    handles.window = window;
}
