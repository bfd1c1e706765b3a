// The messages about looks and the window.
#include "pane/message_handlers.h"

#include "pane/commands.h"
#include "pane/keys.h"
#include "pane/layout.h"
#include "pane/notify.h"
#include "pane/styles.h"
#include "pane/utf16.h"
#include "pane/view.h"

#include <Scintilla.h>
#include <cstring>

namespace {

Style *style_of(Pane *pane, WPARAM style) {
    return &pane->look.styles[style_slot(static_cast<uint32_t>(style))];
}

uint32_t in_text(const Pane *pane, LPARAM position) {
    const LPARAM length = static_cast<LPARAM>(pane_length(pane));
    return static_cast<uint32_t>(position < 0 ? 0 : position > length ? length : position);
}

// Lines have to be broken anew.
LRESULT fonts_changed(Pane *pane) {
    styles_changed(&pane->look);
    layout_all_changed(pane);
    return 0;
}

LRESULT colours_changed(const Pane *pane) {
    InvalidateRect(pane->window, nullptr, FALSE);
    return 0;
}

}  // namespace

LRESULT on_take_no_notice(Pane *, WPARAM, LPARAM) {
    return 0;
}

// ---- The text's styles --------------------------------------------------------------------------

LRESULT on_get_style_at(Pane *pane, WPARAM wparam, LPARAM) {
    return document_style(&pane->document, static_cast<uint32_t>(wparam));
}

LRESULT on_get_end_styled(Pane *pane, WPARAM, LPARAM) {
    return static_cast<LRESULT>(pane->document.end_styled);
}

LRESULT on_start_styling(Pane *pane, WPARAM wparam, LPARAM) {
    pane->document.styling_at = in_text(pane, static_cast<LPARAM>(wparam));
    return 0;
}

LRESULT on_set_styling(Pane *pane, WPARAM wparam, LPARAM lparam) {
    uint32_t from = 0;
    uint32_t to = 0;
    if (document_style_next(&pane->document, static_cast<uint32_t>(wparam),
                            static_cast<uint8_t>(lparam), &from, &to)) {
        const Lines *lines = &pane->document.lines;
        layout_lines_changed(pane, line_of(lines, from), line_of(lines, to - 1) + 1);
        InvalidateRect(pane->window, nullptr, FALSE);
    }
    return 0;
}

// Styles from a position on are void; they are asked for up to another (-1: the end), and then as
// far as the text is drawn.
LRESULT on_colourise(Pane *pane, WPARAM wparam, LPARAM lparam) {
    const uint32_t from = in_text(pane, static_cast<LPARAM>(wparam));
    Document *document = &pane->document;
    document->end_styled = from < document->end_styled ? from : document->end_styled;
    need_styles(pane, lparam == -1 ? pane_length(pane) : in_text(pane, lparam));
    return colours_changed(pane);
}

// ---- Styles -------------------------------------------------------------------------------------

LRESULT on_style_clear_all(Pane *pane, WPARAM, LPARAM) {
    styles_clear_all(&pane->look);
    return fonts_changed(pane);
}

LRESULT on_style_set_fore(Pane *pane, WPARAM wparam, LPARAM lparam) {
    style_of(pane, wparam)->fore = static_cast<COLORREF>(lparam);
    return colours_changed(pane);
}

LRESULT on_style_set_bold(Pane *pane, WPARAM wparam, LPARAM lparam) {
    style_of(pane, wparam)->bold = lparam != 0;
    return fonts_changed(pane);
}

LRESULT on_style_set_italic(Pane *pane, WPARAM wparam, LPARAM lparam) {
    style_of(pane, wparam)->italic = lparam != 0;
    return fonts_changed(pane);
}

LRESULT on_style_set_size(Pane *pane, WPARAM wparam, LPARAM lparam) {
    style_of(pane, wparam)->size = static_cast<int>(lparam);
    return fonts_changed(pane);
}

LRESULT on_style_set_font(Pane *pane, WPARAM wparam, LPARAM lparam) {
    const char *name = reinterpret_cast<const char *>(lparam);
    Style *style = style_of(pane, wparam);
    if (name == nullptr) {
        return 0;
    }
    memset(style->face, 0, sizeof style->face);
    MultiByteToWideChar(CP_UTF8, 0, name, -1, style->face, LF_FACESIZE - 1);
    return fonts_changed(pane);
}

LRESULT on_style_set_hot_spot(Pane *pane, WPARAM wparam, LPARAM lparam) {
    style_of(pane, wparam)->hot_spot = lparam != 0;
    return 0;
}

LRESULT on_style_get_fore(Pane *pane, WPARAM wparam, LPARAM) {
    return static_cast<LRESULT>(style_of(pane, wparam)->fore);
}

LRESULT on_style_get_bold(Pane *pane, WPARAM wparam, LPARAM) {
    return style_of(pane, wparam)->bold ? 1 : 0;
}

LRESULT on_style_get_italic(Pane *pane, WPARAM wparam, LPARAM) {
    return style_of(pane, wparam)->italic ? 1 : 0;
}

LRESULT on_style_get_size(Pane *pane, WPARAM wparam, LPARAM) {
    return style_of(pane, wparam)->size;
}

LRESULT on_style_get_font(Pane *pane, WPARAM wparam, LPARAM lparam) {
    const wchar_t *face = style_of(pane, wparam)->face;
    const uint32_t units = static_cast<uint32_t>(wcslen(face));
    const uint32_t length = utf8_length(face, units);
    char *name = reinterpret_cast<char *>(lparam);
    if (name != nullptr) {
        utf8_copy(face, units, name);
        name[length] = '\0';
    }
    return static_cast<LRESULT>(length);
}

LRESULT on_style_get_hot_spot(Pane *pane, WPARAM wparam, LPARAM) {
    return style_of(pane, wparam)->hot_spot ? 1 : 0;
}

// Only that of what is selected in a pane without the focus.
LRESULT on_set_element_colour(Pane *pane, WPARAM wparam, LPARAM lparam) {
    if (wparam == SC_ELEMENT_SELECTION_INACTIVE_BACK) {
        pane->inactive_back = static_cast<COLORREF>(lparam) & 0xFFFFFF;
    }
    return colours_changed(pane);
}

LRESULT on_get_text_height(Pane *pane, WPARAM, LPARAM) {
    styles_prepare(&pane->look);
    return pane->look.line_height;
}

LRESULT on_zoom(Pane *pane, WPARAM wparam, LPARAM) {
    set_zoom(pane, static_cast<int>(wparam));
    return 0;
}

LRESULT on_get_zoom(Pane *pane, WPARAM, LPARAM) {
    return pane->look.zoom;
}

// ---- The window ---------------------------------------------------------------------------------

LRESULT on_set_margin(Pane *pane, WPARAM wparam, LPARAM lparam) {
    if (wparam < k_margins) {
        pane->view.margins[wparam] = static_cast<int>(lparam);
        layout_all_changed(pane);
    }
    return 0;
}

LRESULT on_set_mask(Pane *pane, WPARAM wparam, LPARAM) {
    pane->notify_mask = static_cast<uint32_t>(wparam);
    return 0;
}

LRESULT on_clear_key(Pane *pane, WPARAM wparam, LPARAM) {
    key_clear(pane, static_cast<uint32_t>(wparam));
    return 0;
}

LRESULT on_set_wrap_mode(Pane *pane, WPARAM wparam, LPARAM) {
    layout_set_wrap(pane, wparam != SC_WRAP_NONE);
    view_update_side_bar(pane);
    return 0;
}

LRESULT on_get_wrap_mode(Pane *pane, WPARAM, LPARAM) {
    return pane->layout.wrap ? SC_WRAP_WORD : SC_WRAP_NONE;
}

LRESULT on_get_wrap_count(Pane *pane, WPARAM wparam, LPARAM) {
    layout_prepare(pane);
    const uint32_t line = static_cast<uint32_t>(wparam);
    return line < lines_count(&pane->document.lines)
               ? static_cast<LRESULT>(visual_height(&pane->document.visual, line))
               : 1;
}

LRESULT on_set_caret_policy(Pane *pane, WPARAM wparam, LPARAM lparam) {
    pane->view.policy = {static_cast<int>(wparam), static_cast<int>(lparam)};
    return 0;
}

LRESULT on_set_end_at_last_line(Pane *pane, WPARAM wparam, LPARAM) {
    pane->view.end_at_last_line = wparam != 0;
    return 0;
}

LRESULT on_set_vertical_bar(Pane *pane, WPARAM wparam, LPARAM) {
    pane->view.bar_hidden = wparam == 0;
    view_update_bars(pane);
    return 0;
}

LRESULT on_scroll_caret(Pane *pane, WPARAM, LPARAM) {
    view_show_caret(pane);
    return 0;
}

LRESULT on_get_first_visible(Pane *pane, WPARAM, LPARAM) {
    return static_cast<LRESULT>(pane->view.top);
}

LRESULT on_set_first_visible(Pane *pane, WPARAM wparam, LPARAM) {
    view_scroll_to(pane, static_cast<int>(wparam));
    return 0;
}

LRESULT on_get_lines_on_screen(Pane *pane, WPARAM, LPARAM) {
    styles_prepare(&pane->look);
    return pane->view.height / pane->look.line_height;
}

LRESULT on_get_visible_from_line(Pane *pane, WPARAM wparam, LPARAM) {
    const uint32_t total = layout_line_count(pane);
    return static_cast<LRESULT>(
        wparam < lines_count(&pane->document.lines)
            ? visual_top(&pane->document.visual, static_cast<uint32_t>(wparam))
            : total);
}

LRESULT on_get_line_from_visible(Pane *pane, WPARAM wparam, LPARAM) {
    layout_prepare(pane);
    return static_cast<LRESULT>(visual_find(&pane->document.visual, static_cast<uint32_t>(wparam)));
}

// All lines are seen always; but who asks wants to know where they are.
LRESULT on_ensure_visible(Pane *pane, WPARAM, LPARAM) {
    layout_prepare_styled(pane, pane_length(pane));
    return 0;
}

LRESULT on_get_point_x(Pane *pane, WPARAM, LPARAM lparam) {
    return layout_x_of(pane, in_text(pane, lparam));
}

LRESULT on_get_point_y(Pane *pane, WPARAM, LPARAM lparam) {
    const int row = static_cast<int>(layout_row_of(pane, in_text(pane, lparam)));
    const int y = (row - static_cast<int>(pane->view.top)) * pane->look.line_height;
    return y;
}

LRESULT on_get_position_at(Pane *pane, WPARAM wparam, LPARAM lparam) {
    const POINT at = {static_cast<LONG>(wparam), static_cast<LONG>(lparam)};
    return static_cast<LRESULT>(layout_position_at(pane, at, Near::edge));
}

LRESULT on_get_character_at(Pane *pane, WPARAM wparam, LPARAM lparam) {
    const POINT at = {static_cast<LONG>(wparam), static_cast<LONG>(lparam)};
    return static_cast<LRESULT>(layout_position_at(pane, at, Near::character));
}

LRESULT on_get_focus(Pane *pane, WPARAM, LPARAM) {
    return pane->focused ? 1 : 0;
}
