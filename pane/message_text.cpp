// The messages about text, selection and undo.
#include "pane/message_handlers.h"

#include "pane/characters.h"
#include "pane/clipboard.h"
#include "pane/edit.h"
#include "pane/find.h"
#include "pane/layout.h"
#include "pane/selection.h"
#include "pane/view.h"
#include "pane/words.h"

#include <Scintilla.h>
#include <cstring>

namespace {

uint32_t in_text(const Pane *pane, LPARAM position) {
    const LPARAM length = static_cast<LPARAM>(pane_length(pane));
    return static_cast<uint32_t>(position < 0 ? 0 : position > length ? length : position);
}

uint32_t in_text(const Pane *pane, WPARAM position) {
    return in_text(pane, static_cast<LPARAM>(position));
}

const char *bytes_of(LPARAM lparam) {
    return reinterpret_cast<const char *>(lparam);
}

uint32_t length_of(LPARAM lparam) {
    return lparam != 0 ? static_cast<uint32_t>(strlen(bytes_of(lparam))) : 0;
}

// Copies a range out with a NUL behind it.
LRESULT copy_out(const Pane *pane, uint32_t from, uint32_t to, char *bytes) {
    if (bytes != nullptr) {
        gap_copy(pane_text(pane), from, to - from, bytes);
        bytes[to - from] = '\0';
    }
    return static_cast<LRESULT>(to - from);
}

// What makes letters of either case the same.
uint32_t fold_letter(uint32_t code) {
    if (code < 0x80) {
        return code >= 'A' && code <= 'Z' ? code | 0x20 : code;
    }
    if (code >= 0x10000) {
        return code;
    }
    wchar_t letter = static_cast<wchar_t>(code);
    CharLowerBuffW(&letter, 1);
    return letter;
}

}  // namespace

// ---- Text ---------------------------------------------------------------------------------------

// A selection that it pushes on leaves the caret as far behind.
LRESULT on_add_text(Pane *pane, WPARAM wparam, LPARAM lparam) {
    const uint32_t length = static_cast<uint32_t>(wparam);
    if (edit_insert(pane, pane->caret, bytes_of(lparam), length)) {
        const uint32_t caret =
            in_text(pane, static_cast<LPARAM>(pane->caret) + static_cast<LPARAM>(length));
        select_range(pane, caret, caret);
    }
    return 0;
}

// The selection does not outlive it.
LRESULT on_insert_text(Pane *pane, WPARAM wparam, LPARAM lparam) {
    const uint32_t caret = pane->caret;
    const uint32_t at = static_cast<LPARAM>(wparam) == -1 ? caret : in_text(pane, wparam);
    const uint32_t length = length_of(lparam);
    if (edit_insert(pane, at, bytes_of(lparam), length)) {
        const uint32_t behind = caret > at ? caret + length : caret;
        select_range(pane, behind, behind);
    }
    return 0;
}

LRESULT on_clear_all(Pane *pane, WPARAM, LPARAM) {
    edit_set_text(pane, "", 0);
    view_scroll_to(pane, 0);
    return 0;
}

LRESULT on_get_length(Pane *pane, WPARAM, LPARAM) {
    return static_cast<LRESULT>(pane_length(pane));
}

LRESULT on_get_char_at(Pane *pane, WPARAM wparam, LPARAM) {
    return wparam < pane_length(pane)
               ? static_cast<uint8_t>(document_byte(&pane->document, static_cast<uint32_t>(wparam)))
               : 0;
}

LRESULT on_get_text(Pane *pane, WPARAM wparam, LPARAM lparam) {
    const uint32_t length = pane_length(pane);
    const uint32_t copied = lparam == 0 || wparam > length ? length : static_cast<uint32_t>(wparam);
    return copy_out(pane, 0, copied, reinterpret_cast<char *>(lparam));
}

LRESULT on_set_text(Pane *pane, WPARAM, LPARAM lparam) {
    if (lparam == 0) {
        return 0;
    }
    edit_set_text(pane, bytes_of(lparam), length_of(lparam));
    return 1;
}

LRESULT on_get_text_range(Pane *pane, WPARAM, LPARAM lparam) {
    const Sci_TextRange *range = reinterpret_cast<const Sci_TextRange *>(lparam);
    const LPARAM last = range->chrg.cpMax;
    const uint32_t to = last == -1 ? pane_length(pane) : in_text(pane, last);
    const uint32_t from = in_text(pane, LPARAM{range->chrg.cpMin});
    return copy_out(pane, from < to ? from : to, to, range->lpstrText);
}

LRESULT on_get_selected_text(Pane *pane, WPARAM, LPARAM lparam) {
    return copy_out(pane, selection_start(pane), selection_end(pane),
                    reinterpret_cast<char *>(lparam));
}

LRESULT on_replace_selection(Pane *pane, WPARAM, LPARAM lparam) {
    if (lparam != 0) {
        edit_replace_selection(pane, bytes_of(lparam), length_of(lparam));
    }
    return 0;
}

LRESULT on_set_target_start(Pane *pane, WPARAM wparam, LPARAM) {
    pane->target_start = in_text(pane, wparam);
    return 0;
}

LRESULT on_set_target_end(Pane *pane, WPARAM wparam, LPARAM) {
    pane->target_end = in_text(pane, wparam);
    return 0;
}

LRESULT on_replace_target(Pane *pane, WPARAM wparam, LPARAM lparam) {
    const bool counted = static_cast<LPARAM>(wparam) != -1;
    const uint32_t length = counted ? static_cast<uint32_t>(wparam) : length_of(lparam);
    pane->target_end = in_text(pane, static_cast<LPARAM>(pane->target_end));
    pane->target_start = in_text(pane, static_cast<LPARAM>(pane->target_start));
    edit_replace_target(pane, bytes_of(lparam), length);
    return static_cast<LRESULT>(length);
}

LRESULT on_find_text(Pane *pane, WPARAM wparam, LPARAM lparam) {
    Sci_TextToFind *range = reinterpret_cast<Sci_TextToFind *>(lparam);
    const Search search = {range->lpstrText, static_cast<uint32_t>(strlen(range->lpstrText)),
                           (wparam & SCFIND_MATCHCASE) != 0 ? nullptr : fold_letter};
    const uint32_t from = in_text(pane, LPARAM{range->chrg.cpMin});
    const uint32_t to = in_text(pane, LPARAM{range->chrg.cpMax});
    Found found;
    if (!(from <= to ? find_forward(pane_text(pane), search, from, to, &found)
                     : find_back(pane_text(pane), search, from, to, &found))) {
        return -1;
    }
    range->chrgText.cpMin = static_cast<Sci_PositionCR>(found.start);
    range->chrgText.cpMax = static_cast<Sci_PositionCR>(found.end);
    return static_cast<LRESULT>(found.start);
}

LRESULT on_get_bytes(Pane *pane, WPARAM, LPARAM) {
    return reinterpret_cast<LRESULT>(document_bytes(&pane->document));
}

LRESULT on_copy_text(Pane *pane, WPARAM wparam, LPARAM lparam) {
    clipboard_put(pane, bytes_of(lparam), static_cast<uint32_t>(wparam));
    return 0;
}

LRESULT on_can_paste(Pane *, WPARAM, LPARAM) {
    return clipboard_has_text() ? 1 : 0;
}

// ---- Undo ---------------------------------------------------------------------------------------

LRESULT on_can_undo(Pane *pane, WPARAM, LPARAM) {
    return pane->document.undo.done.count > 0 ? 1 : 0;
}

LRESULT on_can_redo(Pane *pane, WPARAM, LPARAM) {
    return pane->document.undo.undone.count > 0 ? 1 : 0;
}

LRESULT on_empty_undo(Pane *pane, WPARAM, LPARAM) {
    undo_forget(&pane->document.undo);
    return 0;
}

LRESULT on_set_undo_collection(Pane *pane, WPARAM wparam, LPARAM) {
    pane->document.collecting = wparam != 0;
    return 0;
}

LRESULT on_begin_undo(Pane *pane, WPARAM, LPARAM) {
    undo_begin_group(&pane->document.undo);
    return 0;
}

LRESULT on_end_undo(Pane *pane, WPARAM, LPARAM) {
    undo_end_group(&pane->document.undo);
    return 0;
}

LRESULT on_set_save_point(Pane *pane, WPARAM, LPARAM) {
    document_set_save_point(&pane->document);
    return 0;
}

LRESULT on_get_modify(Pane *pane, WPARAM, LPARAM) {
    return undo_at_save_point(&pane->document.undo) ? 0 : 1;
}

// ---- Selection ----------------------------------------------------------------------------------

LRESULT on_get_caret(Pane *pane, WPARAM, LPARAM) {
    return static_cast<LRESULT>(pane->caret);
}

LRESULT on_get_anchor(Pane *pane, WPARAM, LPARAM) {
    return static_cast<LRESULT>(pane->anchor);
}

LRESULT on_get_selection_start(Pane *pane, WPARAM, LPARAM) {
    return static_cast<LRESULT>(selection_start(pane));
}

LRESULT on_get_selection_end(Pane *pane, WPARAM, LPARAM) {
    return static_cast<LRESULT>(selection_end(pane));
}

LRESULT on_get_selection_empty(Pane *pane, WPARAM, LPARAM) {
    return selection_empty(pane) ? 1 : 0;
}

// A negative caret is the text's end, a negative anchor the caret.
LRESULT on_set_selection(Pane *pane, WPARAM wparam, LPARAM lparam) {
    const uint32_t caret = lparam < 0 ? pane_length(pane) : in_text(pane, lparam);
    const uint32_t anchor = static_cast<LPARAM>(wparam) < 0 ? caret : in_text(pane, wparam);
    select_range(pane, anchor, caret);
    view_show_caret(pane);
    return 0;
}

LRESULT on_go_to(Pane *pane, WPARAM wparam, LPARAM) {
    const uint32_t caret = in_text(pane, wparam);
    select_range(pane, caret, caret);
    view_show_caret(pane);
    return 0;
}

LRESULT on_hide_selection(Pane *pane, WPARAM wparam, LPARAM) {
    pane->selection_hidden = wparam != 0;
    InvalidateRect(pane->window, nullptr, FALSE);
    return 0;
}

LRESULT on_get_selection_hidden(Pane *pane, WPARAM, LPARAM) {
    return pane->selection_hidden ? 1 : 0;
}

LRESULT on_get_over_type(Pane *pane, WPARAM, LPARAM) {
    return pane->over_type ? 1 : 0;
}

LRESULT on_set_over_type(Pane *pane, WPARAM wparam, LPARAM) {
    pane->over_type = wparam != 0;
    return 0;
}

// ---- Words, lines and steps ---------------------------------------------------------------------

LRESULT on_get_word_start(Pane *pane, WPARAM wparam, LPARAM lparam) {
    const uint32_t length = pane_length(pane);
    const uint32_t at = in_text(pane, wparam);
    return static_cast<LRESULT>(wparam > length ? length
                                                : word_start(pane_text(pane), at, lparam != 0));
}

LRESULT on_get_word_end(Pane *pane, WPARAM wparam, LPARAM lparam) {
    return static_cast<LRESULT>(word_end(pane_text(pane), in_text(pane, wparam), lparam != 0));
}

LRESULT on_get_line(Pane *pane, WPARAM wparam, LPARAM) {
    return static_cast<LRESULT>(line_of(&pane->document.lines, in_text(pane, wparam)));
}

LRESULT on_get_line_start(Pane *pane, WPARAM wparam, LPARAM) {
    const Document *document = &pane->document;
    if (static_cast<LPARAM>(wparam) < 0) {
        const uint32_t line = line_of(&document->lines, selection_start(pane));
        return static_cast<LRESULT>(document_line_start(document, line));
    }
    if (wparam > lines_count(&document->lines)) {
        return -1;
    }
    return static_cast<LRESULT>(document_line_start(document, static_cast<uint32_t>(wparam)));
}

LRESULT on_get_line_end(Pane *pane, WPARAM wparam, LPARAM) {
    const uint32_t line = static_cast<uint32_t>(wparam);
    return static_cast<LRESULT>(line < lines_count(&pane->document.lines)
                                    ? document_line_end(&pane->document, line)
                                    : pane_length(pane));
}

LRESULT on_get_line_count(Pane *pane, WPARAM, LPARAM) {
    return static_cast<LRESULT>(lines_count(&pane->document.lines));
}

LRESULT on_get_position_before(Pane *pane, WPARAM wparam, LPARAM) {
    return static_cast<LRESULT>(position_before(pane_text(pane), in_text(pane, wparam)));
}

LRESULT on_get_position_after(Pane *pane, WPARAM wparam, LPARAM) {
    return static_cast<LRESULT>(position_after(pane_text(pane), in_text(pane, wparam)));
}
