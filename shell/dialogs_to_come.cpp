// Stand-ins, so that the program links, for the dialogs that are still being written.
#include "shell/dialogs.h"

bool open_zoom_dialog() {
    return false;
}

void open_replace_dialog() {}

HWND search_bar() {
    return nullptr;
}

bool search_in_progress() {
    return false;
}

void open_settings_sheet() {}
