#include "pane/messages.h"

#include "pane/commands.h"
#include "pane/message_handlers.h"

#include <Scintilla.h>

namespace {

// Messages of older components, which newer ones take no notice of.
constexpr UINT k_sci_set_style_bits = 2090;
constexpr UINT k_sci_set_lexer = 4001;

struct MessageRow {
    UINT message;
    LRESULT (*handler)(Pane *pane, WPARAM wparam, LPARAM lparam);
};

// By their numbers. Messages without parameters, which keys may stand for, are commands.cpp's.
constexpr MessageRow k_messages[] = {
    {SCI_ADDTEXT, on_add_text},
    {SCI_INSERTTEXT, on_insert_text},
    {SCI_CLEARALL, on_clear_all},
    {SCI_GETLENGTH, on_get_length},
    {SCI_GETCHARAT, on_get_char_at},
    {SCI_GETCURRENTPOS, on_get_caret},
    {SCI_GETANCHOR, on_get_anchor},
    {SCI_GETSTYLEAT, on_get_style_at},
    {SCI_SETUNDOCOLLECTION, on_set_undo_collection},
    {SCI_SETSAVEPOINT, on_set_save_point},
    {SCI_CANREDO, on_can_redo},
    {SCI_POSITIONFROMPOINT, on_get_position_at},
    {SCI_GOTOPOS, on_go_to},
    {SCI_GETENDSTYLED, on_get_end_styled},
    {SCI_STARTSTYLING, on_start_styling},
    {SCI_SETSTYLING, on_set_styling},
    {SCI_SETCODEPAGE, on_take_no_notice},
    {SCI_STYLECLEARALL, on_style_clear_all},
    {SCI_STYLESETFORE, on_style_set_fore},
    {SCI_STYLESETBOLD, on_style_set_bold},
    {SCI_STYLESETITALIC, on_style_set_italic},
    {SCI_STYLESETSIZE, on_style_set_size},
    {SCI_STYLESETFONT, on_style_set_font},
    {SCI_CLEARCMDKEY, on_clear_key},
    {SCI_BEGINUNDOACTION, on_begin_undo},
    {SCI_ENDUNDOACTION, on_end_undo},
    {SCI_GETSELECTIONHIDDEN, on_get_selection_hidden},
    {k_sci_set_style_bits, on_take_no_notice},
    {SCI_GETLINEENDPOSITION, on_get_line_end},
    {SCI_GETSELECTIONSTART, on_get_selection_start},
    {SCI_GETSELECTIONEND, on_get_selection_end},
    {SCI_FINDTEXT, on_find_text},
    {SCI_GETFIRSTVISIBLELINE, on_get_first_visible},
    {SCI_GETLINECOUNT, on_get_line_count},
    {SCI_GETMODIFY, on_get_modify},
    {SCI_SETSEL, on_set_selection},
    {SCI_GETSELTEXT, on_get_selected_text},
    {SCI_GETTEXTRANGE, on_get_text_range},
    {SCI_HIDESELECTION, on_hide_selection},
    {SCI_POINTXFROMPOSITION, on_get_point_x},
    {SCI_POINTYFROMPOSITION, on_get_point_y},
    {SCI_LINEFROMPOSITION, on_get_line},
    {SCI_POSITIONFROMLINE, on_get_line_start},
    {SCI_SCROLLCARET, on_scroll_caret},
    {SCI_REPLACESEL, on_replace_selection},
    {SCI_CANPASTE, on_can_paste},
    {SCI_CANUNDO, on_can_undo},
    {SCI_EMPTYUNDOBUFFER, on_empty_undo},
    {SCI_SETTEXT, on_set_text},
    {SCI_GETTEXT, on_get_text},
    {SCI_GETTEXTLENGTH, on_get_length},
    {SCI_SETOVERTYPE, on_set_over_type},
    {SCI_GETOVERTYPE, on_get_over_type},
    {SCI_SETTARGETSTART, on_set_target_start},
    {SCI_SETTARGETEND, on_set_target_end},
    {SCI_REPLACETARGET, on_replace_target},
    {SCI_VISIBLEFROMDOCLINE, on_get_visible_from_line},
    {SCI_DOCLINEFROMVISIBLE, on_get_line_from_visible},
    {SCI_ENSUREVISIBLE, on_ensure_visible},
    {SCI_WRAPCOUNT, on_get_wrap_count},
    {SCI_SETMARGINWIDTHN, on_set_margin},
    {SCI_WORDSTARTPOSITION, on_get_word_start},
    {SCI_WORDENDPOSITION, on_get_word_end},
    {SCI_SETWRAPMODE, on_set_wrap_mode},
    {SCI_GETWRAPMODE, on_get_wrap_mode},
    {SCI_SETENDATLASTLINE, on_set_end_at_last_line},
    {SCI_TEXTHEIGHT, on_get_text_height},
    {SCI_SETVSCROLLBAR, on_set_vertical_bar},
    {SCI_SETMODEVENTMASK, on_set_mask},
    {SCI_LINESONSCREEN, on_get_lines_on_screen},
    {SCI_SETZOOM, on_zoom},
    {SCI_GETZOOM, on_get_zoom},
    {SCI_GETFOCUS, on_get_focus},
    {SCI_SETYCARETPOLICY, on_set_caret_policy},
    {SCI_STYLESETHOTSPOT, on_style_set_hot_spot},
    {SCI_POSITIONBEFORE, on_get_position_before},
    {SCI_POSITIONAFTER, on_get_position_after},
    {SCI_COPYTEXT, on_copy_text},
    {SCI_STYLEGETFORE, on_style_get_fore},
    {SCI_STYLEGETBOLD, on_style_get_bold},
    {SCI_STYLEGETITALIC, on_style_get_italic},
    {SCI_STYLEGETSIZE, on_style_get_size},
    {SCI_STYLEGETFONT, on_style_get_font},
    {SCI_STYLEGETHOTSPOT, on_style_get_hot_spot},
    {SCI_GETCHARACTERPOINTER, on_get_bytes},
    {SCI_CHARPOSITIONFROMPOINT, on_get_character_at},
    {SCI_SETFIRSTVISIBLELINE, on_set_first_visible},
    {SCI_GETSELECTIONEMPTY, on_get_selection_empty},
    {SCI_SETELEMENTCOLOUR, on_set_element_colour},
    {k_sci_set_lexer, on_take_no_notice},
    {SCI_COLOURISE, on_colourise},
    {SCI_SETKEYWORDS, on_take_no_notice},
};

constexpr uint32_t k_message_count = sizeof k_messages / sizeof k_messages[0];

constexpr bool is_in_order() {
    for (uint32_t i = 1; i < k_message_count; ++i) {
        if (k_messages[i - 1].message >= k_messages[i].message) {
            return false;
        }
    }
    return true;
}

static_assert(is_in_order());

const MessageRow *find_message(UINT message) {
    uint32_t low = 0;
    uint32_t high = k_message_count;
    while (high - low > 1) {
        const uint32_t middle = low + (high - low) / 2;
        if (k_messages[middle].message <= message) {
            low = middle;
        } else {
            high = middle;
        }
    }
    return k_messages[low].message == message ? &k_messages[low] : nullptr;
}

}  // namespace

bool handle_message(Pane *pane, UINT message, WPARAM wparam, LPARAM lparam, LRESULT *result) {
    const MessageRow *row = find_message(message);
    *result = row != nullptr ? row->handler(pane, wparam, lparam) : 0;
    return row != nullptr || run_command(pane, message);
}
