// Dropping web files on windows.
#pragma once

#include <windows.h>

#include <shellapi.h>

// Makes a window take dropped web files. Whatever else is dropped goes to the drop target that the
// window had before, if any (a Scintilla pane takes text).
void drop_register(HWND window);

// Puts the first web file (".qvx") of a drop into `path` (`size` units). False when there is none
// that fits.
bool drop_web_file(HDROP files, wchar_t *path, UINT size);

constexpr UINT k_drop_path_max = 1024;
