#include "shell/layout.h"

#include "shell/dialogs/dialogs.h"
#include "shell/main_window.h"
#include "shell/panes/wrapping.h"
#include "shell/platform.h"
#include "shell/status_line.h"
#include "shell/views.h"

#include <aygshell.h>

static struct LayoutState { LayoutTable table; } layout;

namespace {

constexpr int32_t k_handheld_width = 240;  // for which slot 11 is right as it stands
constexpr int32_t k_buttons_gap = 6;       // between the cellname box and the buttons

void move(HWND window, LayoutSlot left, LayoutSlot top, LayoutSlot width, LayoutSlot height) {
    MoveWindow(window, layout_slot(left), layout_slot(top), layout_slot(width), layout_slot(height),
               TRUE);
}

// The buttons stay behind the box however wide it is.
void indent_buttons() {
    indent_navigation_buttons(layout_slot(k_layout_width) == k_handheld_width
                                  ? layout_slot(k_layout_bar_indent)
                                  : layout_slot(k_layout_box_width) + k_buttons_gap);
}

void place(HWND pane, bool shown, int32_t inset) {
    if (!shown) {
        MoveWindow(pane, 0, 0, 0, 0, TRUE);
        return;
    }
    MoveWindow(pane, layout_slot(k_layout_pane_left) + inset, layout_slot(k_layout_pane_top),
               layout_slot(k_layout_pane_width) - inset, layout_slot(k_layout_pane_height), TRUE);
}

void place_text(HWND pane, bool shown) {
    if (!shown) {
        pane_collapsing(pane);
    }
    place(pane, shown, 0);
    if (shown) {
        pane_expanded(pane);
    }
}

}  // namespace

void layout_fill(LayoutTable *table, int32_t width, int32_t height, bool search_band) {
    int32_t *slots = table->slots;
    slots[0] = width;
    slots[1] = height;
    slots[2] = 2;
    slots[3] = 2;
    slots[4] = width - 60;
    slots[5] = 22;
    slots[6] = 120;
    slots[7] = 0;
    slots[8] = 0;
    slots[9] = width;
    slots[10] = 25;
    slots[11] = 186;
    slots[12] = 18;
    slots[16] = 20;
    slots[21] = 25;
    slots[18] = height - slots[21] + 1;
    slots[22] = slots[10] + (search_band ? slots[12] : 0);
    slots[13] = slots[18] - slots[16];
    slots[14] = 0;
    slots[15] = width;
    slots[17] = slots[18] - slots[22];
    slots[19] = 0;
    slots[20] = width;
    slots[23] = 0;
    slots[24] = width;
    slots[25] = slots[18] - slots[16] - slots[22] - 1;
    slots[27] = 200;
}

void compute_layout(int32_t width, int32_t height) {
    layout_fill(&layout.table, width, height, search_in_progress());
}

int32_t layout_slot(int32_t index) {
    return index >= 0 && index < k_layout_slots ? layout.table.slots[index] : 0;
}

void layout_set_slot(int32_t index, int32_t value) {
    if (index >= 0 && index < k_layout_slots) {
        layout.table.slots[index] = value;
    }
}

void place_panes(ViewIndex view) {
    bool text = view == k_view_text;
    bool console = view == k_view_console;
    place(pane_window(k_pane_list), !text && !console, 2);
    place_text(pane_window(k_pane_text), text);
    place_text(pane_window(k_pane_console), console);
}

void apply_layout() {
    move(navigation_buttons(), k_layout_bar_left, k_layout_bar_top, k_layout_bar_width,
         k_layout_bar_height);
    indent_buttons();
    SetWindowPos(pane_window(k_pane_box), HWND_TOP, layout_slot(k_layout_box_left),
                 layout_slot(k_layout_box_top), layout_slot(k_layout_box_width),
                 layout_slot(k_layout_box_height), SWP_SHOWWINDOW);
    move(status_line(), k_layout_status_left, k_layout_status_top, k_layout_status_width,
         k_layout_status_height);
    place_panes(current_view());
    move(pane_window(k_pane_tabs), k_layout_tabs_left, k_layout_tabs_top, k_layout_tabs_width,
         k_layout_tabs_height);
}

Area visible_area() {
    SIPINFO panel = {};
    panel.cbSize = sizeof panel;
    SHSipInfo(SPI_GETSIPINFO, 0, &panel, 0);
    const RECT &visible = panel.rcVisibleDesktop;
    Area area = {static_cast<int32_t>(visible.right - visible.left),
                 static_cast<int32_t>(visible.bottom - visible.top)};
    constexpr DWORD k_in_the_way = SIPF_ON | SIPF_DOCKED;
    if ((panel.fdwFlags & k_in_the_way) != k_in_the_way) {
        RECT bar = {};
        GetWindowRect(menu_bar(), &bar);
        area.height -= static_cast<int32_t>(bar.bottom - bar.top);
    }
    return area;
}
