#include "pane/commands.h"

#include "pane/clipboard.h"
#include "pane/edit.h"
#include "pane/layout.h"
#include "pane/notify.h"
#include "pane/selection.h"
#include "pane/styles.h"
#include "pane/view.h"
#include "pane/words.h"

namespace {

constexpr int k_zoom_least = -10;
constexpr int k_zoom_most = 20;

void to_position(Pane *pane, uint32_t position, bool extend) {
    move_caret(pane, position, extend);
    keep_x(pane);
}

// The caret stays in sight.
void scroll_rows(Pane *pane, int rows) {
    view_scroll_to(pane, static_cast<int>(pane->view.top) + rows);
    const uint32_t row = layout_row_of(pane, pane->caret);
    const uint32_t top = pane->view.top;
    const uint32_t bottom = top + view_lines(pane) - 1;
    if (row < top || row > bottom) {
        const uint32_t to = row < top ? top : bottom;
        const int x = pane->wanted_x - pane->view.x_offset;
        const uint32_t position = layout_position_in_row(pane, to, x, Near::edge);
        select_range(pane, position, position);
    }
}

void delete_word_left(Pane *pane) {
    edit_delete_back_to(pane, previous_word(pane_text(pane), pane->caret));
}

void delete_word_right(Pane *pane) {
    edit_delete_up_to(pane, next_word(pane_text(pane), pane->caret));
}

void delete_line_left(Pane *pane) {
    const Document *document = &pane->document;
    const uint32_t line = line_of(&document->lines, pane->caret);
    edit_delete_back_to(pane, document_line_start(document, line));
}

void delete_line_right(Pane *pane) {
    const Document *document = &pane->document;
    const uint32_t line = line_of(&document->lines, pane->caret);
    edit_delete_up_to(pane, document_line_end(document, line));
}

void zoom_in(Pane *pane) {
    if (pane->look.zoom < k_zoom_most) {
        set_zoom(pane, pane->look.zoom + 1);
    }
}

void zoom_out(Pane *pane) {
    if (pane->look.zoom > k_zoom_least) {
        set_zoom(pane, pane->look.zoom - 1);
    }
}

constexpr struct {
    UINT command;
    void (*run)(Pane *pane);
} k_commands[] = {
    {SCI_LINEDOWN, [](Pane *pane) { move_by_row(pane, true, false); }},
    {SCI_LINEDOWNEXTEND, [](Pane *pane) { move_by_row(pane, true, true); }},
    {SCI_LINEUP, [](Pane *pane) { move_by_row(pane, false, false); }},
    {SCI_LINEUPEXTEND, [](Pane *pane) { move_by_row(pane, false, true); }},
    {SCI_LINESCROLLDOWN, [](Pane *pane) { scroll_rows(pane, 1); }},
    {SCI_LINESCROLLUP, [](Pane *pane) { scroll_rows(pane, -1); }},
    {SCI_CHARLEFT, [](Pane *pane) { move_by_character(pane, false, false); }},
    {SCI_CHARLEFTEXTEND, [](Pane *pane) { move_by_character(pane, false, true); }},
    {SCI_CHARRIGHT, [](Pane *pane) { move_by_character(pane, true, false); }},
    {SCI_CHARRIGHTEXTEND, [](Pane *pane) { move_by_character(pane, true, true); }},
    {SCI_WORDLEFT, [](Pane *pane) { move_by_word(pane, false, false); }},
    {SCI_WORDLEFTEXTEND, [](Pane *pane) { move_by_word(pane, false, true); }},
    {SCI_WORDRIGHT, [](Pane *pane) { move_by_word(pane, true, false); }},
    {SCI_WORDRIGHTEXTEND, [](Pane *pane) { move_by_word(pane, true, true); }},
    {SCI_VCHOME, [](Pane *pane) { move_to_line_start(pane, false); }},
    {SCI_VCHOMEEXTEND, [](Pane *pane) { move_to_line_start(pane, true); }},
    {SCI_LINEEND, [](Pane *pane) { move_to_line_end(pane, false); }},
    {SCI_LINEENDEXTEND, [](Pane *pane) { move_to_line_end(pane, true); }},
    {SCI_DOCUMENTSTART, [](Pane *pane) { to_position(pane, 0, false); }},
    {SCI_DOCUMENTSTARTEXTEND, [](Pane *pane) { to_position(pane, 0, true); }},
    {SCI_DOCUMENTEND, [](Pane *pane) { to_position(pane, pane_length(pane), false); }},
    {SCI_DOCUMENTENDEXTEND, [](Pane *pane) { to_position(pane, pane_length(pane), true); }},
    {SCI_PAGEUP, [](Pane *pane) { move_by_page(pane, false, false); }},
    {SCI_PAGEUPEXTEND, [](Pane *pane) { move_by_page(pane, false, true); }},
    {SCI_PAGEDOWN, [](Pane *pane) { move_by_page(pane, true, false); }},
    {SCI_PAGEDOWNEXTEND, [](Pane *pane) { move_by_page(pane, true, true); }},
    {SCI_CLEAR, edit_delete},
    {SCI_DELETEBACK, edit_backspace},
    {SCI_DELWORDLEFT, delete_word_left},
    {SCI_DELWORDRIGHT, delete_word_right},
    {SCI_DELLINELEFT, delete_line_left},
    {SCI_DELLINERIGHT, delete_line_right},
    {SCI_NEWLINE, edit_new_line},
    {SCI_EDITTOGGLEOVERTYPE, [](Pane *pane) { pane->over_type = !pane->over_type; }},
    {SCI_UNDO, edit_undo},
    {SCI_REDO, edit_redo},
    {SCI_CUT, clipboard_cut},
    {SCI_COPY, clipboard_copy},
    {SCI_PASTE, clipboard_paste},
    {SCI_SELECTALL, [](Pane *pane) { select_range(pane, pane_length(pane), 0); }},
    {SCI_CHOOSECARETX, keep_x},
    {SCI_CANCEL, [](Pane *) {}},
    {SCI_ZOOMIN, zoom_in},
    {SCI_ZOOMOUT, zoom_out},
    {SCI_SETZOOM, [](Pane *pane) { set_zoom(pane, 0); }},
};

}  // namespace

bool run_command(Pane *pane, UINT command) {
    for (const auto &row : k_commands) {
        if (row.command == command) {
            row.run(pane);
            return true;
        }
    }
    return false;
}

void set_zoom(Pane *pane, int zoom) {
    if (zoom == pane->look.zoom) {
        return;
    }
    pane->look.zoom = zoom;
    styles_changed(&pane->look);
    layout_all_changed(pane);
    notify_plain(pane, SCN_ZOOM);
}
