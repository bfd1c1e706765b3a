#include "shell/bars.h"

#include "resources/resource.h"
#include "shell/base/handles.h"

#include <aygshell.h>

static struct Bars {
    HWND menu_bar;
    HWND navigation;
    int32_t indent;  // of the navigation buttons
} bars;

namespace {

constexpr uint32_t k_image_size = BAR_IMAGE_HEIGHT << 16 | BAR_IMAGE_WIDTH;

TBBUTTON navigation_button(int image, int command) {
    TBBUTTON button = {};
    button.iBitmap = image;
    button.idCommand = command;
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = TBSTYLE_BUTTON;
    return button;
}

}  // namespace

bool menu_bar_make(HWND parent) {
    SHMENUBARINFO info = {};
    info.cbSize = sizeof info;
    info.hwndParent = parent;
    info.nToolBarId = RES_MAIN_BAR;
    info.hInstRes = program_instance();
    info.nBmpId = RES_BAR_IMAGES;
    info.cBmpImages = BAR_IMAGE_COUNT;
    const bool made = SHCreateMenuBar(&info) != FALSE;
    bars.menu_bar = made ? info.hwndMB : nullptr;
    return made;
}

HWND menu_bar() {
    return bars.menu_bar;
}

void navigation_buttons_create(HWND parent, int32_t indent) {
    TBBUTTON buttons[] = {
        navigation_button(BAR_IMAGE_BACK, CMD_BACK),
        navigation_button(BAR_IMAGE_FOLLOW, CMD_FOLLOW),
    };
    bars.navigation = CreateToolbarEx(
        parent,
        static_cast<DWORD>(WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_TOOLTIPS |
                           CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER),
        CTL_NAVIGATION, BAR_IMAGE_COUNT, program_instance(), RES_BAR_IMAGES, buttons, 2,
        BAR_IMAGE_WIDTH, BAR_IMAGE_HEIGHT, BAR_IMAGE_WIDTH, BAR_IMAGE_HEIGHT, sizeof(TBBUTTON));
    bars.indent = 0;
    indent_navigation_buttons(indent);
}

HWND navigation_buttons() {
    return bars.navigation;
}

// A tool bar takes a new indent only when it works its buttons' places out again.
void indent_navigation_buttons(int32_t indent) {
    if (indent == bars.indent) {
        return;
    }
    bars.indent = indent;
    SendMessageW(bars.navigation, TB_SETINDENT, static_cast<WPARAM>(indent), 0);
    SendMessageW(bars.navigation, TB_SETBITMAPSIZE, 0, static_cast<LPARAM>(k_image_size));
}
