#include "shell/layout.h"

#include "shell/bars.h"
#include "shell/base/handles.h"
#include "shell/find/search_bar.h"
#include "shell/panes/wrapping.h"
#include "shell/status_line.h"

#include <aygshell.h>

static struct Layout {
    LayoutTable table;
    WPARAM size_type;  // of the last WM_SIZE
    LPARAM size;
} layout;

namespace {

constexpr int32_t k_handheld_width = 240;  // for which the indent is right as it is
constexpr int32_t k_buttons_gap = 6;       // between the cellname box and the buttons
constexpr int32_t k_list_inset = 2;        // of the cell list from the left

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
    slots[k_layout_width] = width;
    slots[k_layout_height] = height;
    slots[k_layout_box_top] = 2;
    slots[k_layout_box_left] = 2;
    slots[k_layout_box_width] = width - 60;
    slots[k_layout_box_field_height] = 22;
    slots[k_layout_box_height] = 120;
    slots[k_layout_bar_top] = 0;
    slots[k_layout_bar_left] = 0;
    slots[k_layout_bar_width] = width;
    slots[k_layout_bar_height] = k_top_band_height;
    slots[k_layout_bar_indent] = 186;
    slots[k_layout_search_band] = 18;
    slots[k_layout_tabs_height] = 20;
    slots[k_layout_status_height] = 25;
    // From here on by the slots above.
    slots[k_layout_status_top] = height - slots[k_layout_status_height] + 1;
    slots[k_layout_pane_top] =
        slots[k_layout_bar_height] + (search_band ? slots[k_layout_search_band] : 0);
    slots[k_layout_tabs_top] = slots[k_layout_status_top] - slots[k_layout_tabs_height];
    slots[k_layout_tabs_left] = 0;
    slots[k_layout_tabs_width] = width;
    slots[k_layout_pane_and_tabs_height] = slots[k_layout_status_top] - slots[k_layout_pane_top];
    slots[k_layout_status_left] = 0;
    slots[k_layout_status_width] = width;
    slots[k_layout_pane_left] = 0;
    slots[k_layout_pane_width] = width;
    slots[k_layout_pane_height] = slots[k_layout_tabs_top] - slots[k_layout_pane_top] - 1;
    slots[k_layout_unused] = 200;
}

void compute_layout(int32_t width, int32_t height) {
    layout_fill(&layout.table, width, height, search_in_progress());
}

int32_t layout_slot(int32_t index) {
    return index >= 0 && index < k_layout_slots ? layout.table.slots[index] : 0;
}

void place_panes(ViewIndex view) {
    const bool text = view == k_view_text;
    const bool console = view == k_view_console;
    place(pane_window(k_pane_list), !text && !console, k_list_inset);
    place_text(pane_window(k_pane_text), text);
    place_text(pane_window(k_pane_console), console);
}

void lay_out(WPARAM size_type, LPARAM size) {
    const Area area = visible_area();
    compute_layout(area.width, area.height);
    apply_layout();
    layout.size_type = size_type;
    layout.size = size;
}

void relayout() {
    SendMessageW(main_window(), WM_SIZE, layout.size_type, layout.size);
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
