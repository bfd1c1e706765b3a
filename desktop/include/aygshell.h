// The part of the handheld's shell interface that the program uses, under the handheld's own names.
// There the system has it; desktop/ offers it to desktop Windows and Wine, and the comments say
// what it does on each. Structures have the handheld's fields in the handheld's order; with wider
// handles they are longer on a desktop, which does not look at their size fields.
// NOLINTBEGIN(readability-identifier-naming): the names are the system's.
#pragma once

#include <windows.h>

#include <commctrl.h>

#ifdef __cplusplus
extern "C" {
#endif

// ---- Activation ---------------------------------------------------------------------------------

// One for each top-level window, zeroed by its owner before use. On the handheld hwndLastFocus is
// the control that gets the focus back on activation.
typedef struct SHACTIVATEINFO {
    DWORD cbSize;
    HWND hwndLastFocus;
    UINT fSipUp : 1;
    UINT fSipOnDeactivation : 1;
    UINT fActive : 1;
    UINT fReserved : 29;
} SHACTIVATEINFO;

// For WM_ACTIVATE. The program gives the focus back itself, so that a desktop has nothing to do.
BOOL WINAPI SHHandleWMActivate(HWND window, WPARAM wparam, LPARAM lparam, SHACTIVATEINFO *record,
                               DWORD flags);

// For WM_SETTINGCHANGE, by which the handheld tells that its input panel has moved, and sizes the
// window to what the panel leaves. A desktop has none.
BOOL WINAPI SHHandleWMSettingChange(HWND window, WPARAM wparam, LPARAM lparam,
                                    SHACTIVATEINFO *record);

// ---- Dialogs ------------------------------------------------------------------------------------

#define SHIDIM_FLAGS 0x0001

#define SHIDIF_DONEBUTTON 0x0001
#define SHIDIF_SIZEDLG 0x0002
#define SHIDIF_SIZEDLGFULLSCREEN 0x0004
#define SHIDIF_SIPDOWN 0x0008

typedef struct SHINITDLGINFO {
    DWORD dwMask;
    HWND hDlg;
    DWORD dwFlags;
} SHINITDLGINFO;

// For WM_INITDIALOG. The handheld puts a dialog on the whole screen and OK into its title bar; on a
// desktop it keeps its template's size, is centred over its owner, and with SHIDIF_DONEBUTTON gets
// an OK button unless the template has that or another default button. A property sheet is made no
// wider than its owner there. Child windows are left as they are.
BOOL WINAPI SHInitDialog(SHINITDLGINFO *info);

// ---- The menu bar -------------------------------------------------------------------------------

#define SHCMBF_EMPTYBAR 0x0001
#define SHCMBF_HIDDEN 0x0002
#define SHCMBF_HIDESIPBUTTON 0x0004
#define SHCMBF_COLORBK 0x0008
#define SHCMBF_HMENU 0x0010

// Sent to the menu bar. The menu of the bar; the pop-up of the button whose command is lparam.
#define SHCMBM_GETSUBMENU 0x0591
#define SHCMBM_GETMENU 0x0592

typedef struct SHMENUBARINFO {
    DWORD cbSize;
    HWND hwndParent;
    DWORD dwFlags;
    UINT nToolBarId;
    HINSTANCE hInstRes;
    int nBmpId;
    int cBmpImages;
    HWND hwndMB;  // out
    COLORREF clrBk;
} SHMENUBARINFO;

// Called by the main window while it is created. Makes the bar at the bottom of the screen, on a
// desktop of the window, from the RCDATA and MENU resources nToolBarId. A desktop also gives the
// window a frame: see desktop/frame.h. False when a resource is missing or the bar cannot be made.
BOOL WINAPI SHCreateMenuBar(SHMENUBARINFO *info);

// ---- The input panel ----------------------------------------------------------------------------

#define SPI_SETSIPINFO 224
#define SPI_GETSIPINFO 225

#define SIPF_OFF 0x0000
#define SIPF_ON 0x0001
#define SIPF_DOCKED 0x0002
#define SIPF_LOCKED 0x0004

typedef struct SIPINFO {
    DWORD cbSize;
    DWORD fdwFlags;
    RECT rcVisibleDesktop;
    RECT rcSipRect;
    DWORD dwImDataSize;
    void *pvImData;
} SIPINFO;

// SPI_GETSIPINFO alone is asked. On a desktop the panel is off, and the visible desktop is the main
// window's client area, the menu bar included, with its origin at (0, 0).
BOOL WINAPI SHSipInfo(UINT action, UINT size, PVOID info, UINT change);

#ifdef __cplusplus
}
#endif
// NOLINTEND(readability-identifier-naming)
