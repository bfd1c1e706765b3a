#include "shell/menu_items.h"

#include "resources/resource.h"
#include "shell/scintilla.h"
#include "shell/views.h"
#include "web/cells.h"
#include "web/trail.h"

namespace {

LRESULT ask_active_pane(UINT message) {
    return active_pane_is_text() ? sci(active_pane_window(), message) : 0;
}

bool something_is_selected() {
    return ask_active_pane(SCI_GETSELECTIONSTART) != ask_active_pane(SCI_GETSELECTIONEND);
}

bool can_paste() {
    return ask_active_pane(SCI_CANPASTE) != 0;
}

bool can_undo() {
    return ask_active_pane(SCI_CANUNDO) != 0;
}

bool is_away_from_home() {
    return current_cell() != index_root();
}

constexpr struct {
    WORD command;
    bool (*can_act)();
} k_items[] = {
    {CMD_SELECT_ALL, active_pane_is_text},
    {CMD_CUT, something_is_selected},
    {CMD_COPY, something_is_selected},
    {CMD_PASTE, can_paste},
    {CMD_UNDO, can_undo},
    {CMD_CELL_DELETE, is_away_from_home},
};

}  // namespace

void grey_dead_items(HMENU popup) {
    for (const auto &item : k_items) {
        EnableMenuItem(popup, item.command, item.can_act() ? MF_ENABLED : MF_GRAYED);
    }
}
