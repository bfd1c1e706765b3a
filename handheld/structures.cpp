// The structures whose sizes the handheld's system looks at, held against what it expects.
#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>

#include <aygshell.h>
#include <cstddef>

static_assert(sizeof(SHACTIVATEINFO) == 12);
static_assert(sizeof(SHINITDLGINFO) == 12);
static_assert(sizeof(SHMENUBARINFO) == 36);
static_assert(sizeof(SIPINFO) == 48);
static_assert(sizeof(TBBUTTON) == 20);

// What the names of the sizes that shell/ fills in amount to: where the last field then ends.
static_assert(offsetof(OPENFILENAMEW, lpTemplateName) + sizeof(LPCWSTR) == 76);
static_assert(offsetof(PROPSHEETPAGEW, pcRefParent) + sizeof(UINT *) == 40);
static_assert(offsetof(PROPSHEETHEADERW, pfnCallback) + sizeof(PFNPROPSHEETCALLBACK) == 40);

// Structures are no longer than their fields, and characters as wide as the system's.
struct ThreeBytes {
    char bytes[3];
};
static_assert(sizeof(ThreeBytes) == 3 && sizeof(wchar_t) == 2 && alignof(double) == 4);
