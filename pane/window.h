// Where the system enters SciLexer.dll: loading it registers the window class "Scintilla".
#pragma once

#include <windows.h>

extern "C" BOOL WINAPI pane_entry(HINSTANCE library, DWORD reason, LPVOID reserved);
