#include "shell/menu_items.h"

#include "resources/resource.h"
#include "shell/base/focus.h"
#include "shell/panes/scintilla.h"
#include "web/index.h"
#include "web/trail.h"

namespace {

LRESULT ask_active_pane(UINT message) {
    return active_pane_is_text() ? sci(active_pane_window(), message) : 0;
}

void show_item(HMENU popup, UINT command, bool can_act) {
    EnableMenuItem(popup, command, can_act ? MF_ENABLED : MF_GRAYED);
}

}  // namespace

void grey_dead_items(HMENU popup) {
    const bool selected =
        ask_active_pane(SCI_GETSELECTIONSTART) != ask_active_pane(SCI_GETSELECTIONEND);
    show_item(popup, CMD_SELECT_ALL, active_pane_is_text());
    show_item(popup, CMD_CUT, selected);
    show_item(popup, CMD_COPY, selected);
    show_item(popup, CMD_PASTE, ask_active_pane(SCI_CANPASTE) != 0);
    show_item(popup, CMD_UNDO, ask_active_pane(SCI_CANUNDO) != 0);
    show_item(popup, CMD_CELL_DELETE, current_cell() != index_root());
}
