#include "pane/menu.h"

#include "pane/clipboard.h"
#include "pane/commands.h"
#include "pane/layout.h"

#include <Scintilla.h>

namespace {

bool always(const Pane *) {
    return true;
}

bool has_selection(const Pane *pane) {
    return !selection_empty(pane);
}

constexpr struct {
    UINT command;  // 0: a line between the rows
    const wchar_t *text;
    bool (*can)(const Pane *pane);
} k_rows[] = {
    {SCI_UNDO, L"Undo", [](const Pane *pane) { return pane->document.undo.done.count > 0; }},
    {SCI_REDO, L"Redo", [](const Pane *pane) { return pane->document.undo.undone.count > 0; }},
    {0, nullptr, always},
    {SCI_CUT, L"Cut", has_selection},
    {SCI_COPY, L"Copy", has_selection},
    {SCI_PASTE, L"Paste", [](const Pane *) { return clipboard_has_text(); }},
    {SCI_CLEAR, L"Delete", has_selection},
    {0, nullptr, always},
    {SCI_SELECTALL, L"Select All", always},
};

void fill_menu(const Pane *pane, HMENU menu) {
    for (const auto &row : k_rows) {
        const UINT state = row.can(pane) ? MF_ENABLED : MF_GRAYED;
        const UINT kind = row.command == 0 ? MF_SEPARATOR : MF_STRING | state;
        AppendMenuW(menu, kind, row.command, row.text);
    }
}

POINT place_of_caret(Pane *pane) {
    const int row = static_cast<int>(layout_row_of(pane, pane->caret) - pane->view.top) + 1;
    POINT at = {layout_x_of(pane, pane->caret), row * pane->look.line_height};
    ClientToScreen(pane->window, &at);
    return at;
}

}  // namespace

void menu_open(Pane *pane, POINT at) {
    HMENU menu = CreatePopupMenu();
    if (menu == nullptr) {
        return;
    }
    fill_menu(pane, menu);
    const POINT corner = at.x == -1 && at.y == -1 ? place_of_caret(pane) : at;
    const BOOL chosen = TrackPopupMenuEx(menu, TPM_RETURNCMD, static_cast<int>(corner.x),
                                         static_cast<int>(corner.y), pane->window, nullptr);
    DestroyMenu(menu);
    if (chosen != 0) {
        run_command(pane, static_cast<UINT>(chosen));
    }
}
