// SHCreateMenuBar() makes the bar from the resource that the handheld's shell reads: a row of
// 16-bit words, of which each button has as many. The bar itself only has the buttons, each as wide
// as its text or image. A press on a drop-down button comes back from the tool bar as a
// notification and is handed to the pop-ups, which the mouse and the arrow keys then walk from
// button to button.
#include "desktop/menu_bar.h"

#include "desktop/popups.h"
#include "resources/resource.h"

#include <aygshell.h>

static struct MenuBar {
    HWND bar;
    WNDPROC tool_bar;  // the tool bar's own window procedure
    HFONT font;
} menu_bar;

namespace {

// The resource: 16-bit words, a head and then one entry for each button.
enum HeadWord { k_head_menu, k_head_count, k_head_words };
enum ButtonWord {
    k_button_image,
    k_button_command,
    k_button_state,
    k_button_style,
    k_button_text,
    k_button_zero,
    k_button_popup,
    k_button_words
};

// In pixels; the tool bar would make every button as wide as the widest.
constexpr int k_image_button_width = 26;
constexpr int k_text_padding = 18;

// 9 points, rounded to the nearest pixel.
HFONT make_bar_font(HWND window) {
    HDC context = GetDC(window);
    LOGFONTW font = {};
    font.lfHeight = -(9 * GetDeviceCaps(context, LOGPIXELSY) + 36) / 72;
    font.lfCharSet = DEFAULT_CHARSET;
    static_assert(sizeof L"Tahoma" <= sizeof font.lfFaceName);
    lstrcpyW(font.lfFaceName, L"Tahoma");
    ReleaseDC(window, context);
    return CreateFontIndirectW(&font);
}

int text_width(const wchar_t *text) {
    HDC context = GetDC(menu_bar.bar);
    HGDIOBJ previous = SelectObject(context, menu_bar.font);
    SIZE size = {};
    GetTextExtentPoint32W(context, text, lstrlenW(text), &size);
    SelectObject(context, previous);
    ReleaseDC(menu_bar.bar, context);
    return static_cast<int>(size.cx);
}

void add_button(HINSTANCE instance, const WORD *entry) {
    wchar_t text[32];
    TBBUTTON button = {};
    button.iBitmap = static_cast<short>(entry[k_button_image]);
    button.idCommand = entry[k_button_command];
    button.fsState = static_cast<BYTE>(entry[k_button_state]);
    button.fsStyle = static_cast<BYTE>(entry[k_button_style]);
    button.iString = -1;
    if (entry[k_button_text] != 0 && LoadStringW(instance, entry[k_button_text], text, 32) > 0) {
        button.iString = reinterpret_cast<INT_PTR>(text);
    }
    popups_add_button(entry[k_button_popup]);
    SendMessageW(menu_bar.bar, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    TBBUTTONINFOW width = {};
    width.cbSize = sizeof width;
    width.dwMask = TBIF_SIZE;
    width.cx = static_cast<WORD>(button.iString == -1 ? k_image_button_width
                                                      : text_width(text) + k_text_padding);
    SendMessageW(menu_bar.bar, TB_SETBUTTONINFOW, entry[k_button_command],
                 reinterpret_cast<LPARAM>(&width));
}

int index_of(WPARAM command) {
    return static_cast<int>(SendMessageW(menu_bar.bar, TB_COMMANDTOINDEX, command, 0));
}

// Tool bars differ in the room that they leave for the picture of a button without one, so buttons
// with text alone are drawn here: the text in the middle, marked while the pop-up is open.
LRESULT draw_button(const NMTBCUSTOMDRAW *draw) {
    wchar_t text[32] = L"";
    const WPARAM command = draw->nmcd.dwItemSpec;
    if (draw->nmcd.dwDrawStage == CDDS_PREPAINT) {
        return CDRF_NOTIFYITEMDRAW;
    }
    if (draw->nmcd.dwDrawStage != CDDS_ITEMPREPAINT ||
        SendMessageW(menu_bar.bar, TB_GETBUTTONTEXTW, command, reinterpret_cast<LPARAM>(text)) <=
            0) {
        return CDRF_DODEFAULT;
    }
    HDC context = draw->nmcd.hdc;
    RECT rect = draw->nmcd.rc;
    const bool open = popups_open_button() == index_of(command);
    const bool hot = popups_open_button() < 0 && (draw->nmcd.uItemState & CDIS_HOT) != 0;
    FillRect(context, &rect,
             GetSysColorBrush(open ? COLOR_HIGHLIGHT : (hot ? COLOR_3DLIGHT : COLOR_BTNFACE)));
    SetTextColor(context, GetSysColor(open ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT));
    SetBkMode(context, TRANSPARENT);
    HGDIOBJ previous = SelectObject(context, menu_bar.font);
    DrawTextW(context, text, -1, &rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    SelectObject(context, previous);
    return CDRF_SKIPDEFAULT;
}

LRESULT CALLBACK bar_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == SHCMBM_GETMENU) {
        return reinterpret_cast<LRESULT>(popups_menu());
    }
    if (message == SHCMBM_GETSUBMENU) {
        return reinterpret_cast<LRESULT>(popup_of(index_of(static_cast<WPARAM>(lparam))));
    }
    return CallWindowProcW(menu_bar.tool_bar, window, message, wparam, lparam);
}

// The words of the resource, or null when there are none or they are cut short.
const WORD *load_description(HINSTANCE instance, UINT id) {
    HRSRC resource = FindResourceW(instance, MAKEINTRESOURCEW(id), RT_RCDATA);
    HGLOBAL data = resource != nullptr ? LoadResource(instance, resource) : nullptr;
    const WORD *words = data != nullptr ? static_cast<const WORD *>(LockResource(data)) : nullptr;
    const DWORD count = words != nullptr ? SizeofResource(instance, resource) / sizeof(WORD) : 0;
    if (count < k_head_words || words[k_head_count] > k_buttons_max ||
        count < k_head_words + DWORD{words[k_head_count]} * k_button_words) {
        return nullptr;
    }
    return words;
}

void set_up_bar(HINSTANCE instance, int bitmap, int image_count) {
    HWND bar = menu_bar.bar;
    SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    menu_bar.font = make_bar_font(bar);
    SendMessageW(bar, WM_SETFONT, reinterpret_cast<WPARAM>(menu_bar.font), FALSE);
    SendMessageW(bar, TB_SETBITMAPSIZE, 0, MAKELPARAM(16, 15));
    TBADDBITMAP images = {instance, static_cast<UINT_PTR>(bitmap)};
    SendMessageW(bar, TB_ADDBITMAP, static_cast<WPARAM>(image_count),
                 reinterpret_cast<LPARAM>(&images));
    menu_bar.tool_bar = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(bar, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(bar_proc)));
}

// A button without such a string has no tip.
void tell_tip(NMTTDISPINFOW *tip) {
    tip->lpszText = tip->szText;
    tip->szText[0] = 0;
    LoadStringW(GetModuleHandleW(nullptr), STR_TIP + static_cast<UINT>(tip->hdr.idFrom),
                tip->szText, sizeof tip->szText / sizeof *tip->szText);
}

}  // namespace

HWND menu_bar_create(HWND parent, HINSTANCE instance, UINT id, int bitmap, int image_count) {
    const WORD *words = load_description(instance, id);
    HMENU menu =
        words != nullptr ? LoadMenuW(instance, MAKEINTRESOURCEW(words[k_head_menu])) : nullptr;
    if (menu == nullptr) {
        return nullptr;
    }
    const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_BAR_CLASSES};
    InitCommonControlsEx(&controls);
    menu_bar = {};
    menu_bar.bar =
        CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr,
                        WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_LIST |
                            TBSTYLE_TOOLTIPS | CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER,
                        0, 0, 0, 0, parent, nullptr, instance, nullptr);
    popups_start(menu_bar.bar, menu);
    if (menu_bar.bar == nullptr) {
        menu_bar_destroyed();
        return nullptr;
    }
    set_up_bar(instance, bitmap, image_count);
    const WORD *entry = words + k_head_words;
    for (WORD index = 0; index < words[k_head_count]; ++index) {
        add_button(instance, entry);
        entry += k_button_words;
    }
    menu_bar_place();
    return menu_bar.bar;
}

void menu_bar_place() {
    if (menu_bar.bar != nullptr) {
        RECT rect;
        GetClientRect(GetParent(menu_bar.bar), &rect);
        MoveWindow(menu_bar.bar, 0, rect.bottom - k_menu_bar_height, rect.right, k_menu_bar_height,
                   TRUE);
    }
}

void menu_bar_destroyed() {
    popups_end();
    if (menu_bar.font != nullptr) {
        DeleteObject(menu_bar.font);
    }
    menu_bar = {};
}

bool menu_bar_notify(NMHDR *header, LRESULT *result) {
    if (header->code == TTN_GETDISPINFOW) {
        tell_tip(reinterpret_cast<NMTTDISPINFOW *>(header));
        return true;
    }
    if (menu_bar.bar == nullptr || header->hwndFrom != menu_bar.bar) {
        return false;
    }
    *result = 0;
    if (header->code == NM_CUSTOMDRAW) {
        *result = draw_button(reinterpret_cast<const NMTBCUSTOMDRAW *>(header));
    } else if (header->code == TBN_DROPDOWN) {
        const int index =
            index_of(static_cast<WPARAM>(reinterpret_cast<const NMTOOLBARW *>(header)->iItem));
        if (popup_of(index) != nullptr) {
            popups_run(index);
        }
    }
    return true;
}
