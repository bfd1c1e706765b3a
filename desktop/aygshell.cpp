#include <aygshell.h>

#include "desktop/menu_bar.h"
#include "desktop/window.h"

BOOL WINAPI SHCreateMenuBar(SHMENUBARINFO *info) {
    if (info == nullptr || IsWindow(info->hwndParent) == 0 || adopted_main_window() != nullptr) {
        return FALSE;
    }
    info->hwndMB = menu_bar_create(info->hwndParent, info->hInstRes, info->nToolBarId, info->nBmpId,
                                   info->cBmpImages);
    if (info->hwndMB == nullptr) {
        return FALSE;
    }
    adopt_main_window(info->hwndParent);
    menu_bar_place();
    return TRUE;
}

BOOL WINAPI SHSipInfo(UINT action, UINT, PVOID info, UINT) {
    if (action != SPI_GETSIPINFO || info == nullptr) {
        return FALSE;
    }
    SIPINFO *panel = static_cast<SIPINFO *>(info);
    const SIZE size = adopted_client_size();
    panel->fdwFlags = SIPF_OFF;
    panel->rcVisibleDesktop = {0, 0, size.cx, size.cy};
    panel->rcSipRect = {0, size.cy, size.cx, size.cy};
    return TRUE;
}

BOOL WINAPI SHHandleWMActivate(HWND, WPARAM, LPARAM, SHACTIVATEINFO *, DWORD) {
    return TRUE;
}

BOOL WINAPI SHHandleWMSettingChange(HWND, WPARAM, LPARAM, SHACTIVATEINFO *) {
    return TRUE;
}
