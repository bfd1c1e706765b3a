// What each message of the table in messages.cpp does.
#pragma once

#include "pane/pane.h"

// ---- Text, selection and undo (message_text.cpp) ------------------------------------------------

LRESULT on_add_text(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_insert_text(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_clear_all(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_length(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_char_at(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_caret(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_anchor(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_text(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_text(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_text_range(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_selected_text(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_replace_selection(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_target_start(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_target_end(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_replace_target(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_find_text(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_bytes(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_copy_text(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_can_paste(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_can_undo(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_can_redo(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_empty_undo(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_undo_collection(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_begin_undo(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_end_undo(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_save_point(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_modify(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_selection_start(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_selection_end(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_selection_empty(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_selection(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_go_to(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_hide_selection(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_selection_hidden(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_over_type(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_over_type(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_word_start(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_word_end(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_line(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_line_start(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_line_end(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_line_count(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_position_before(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_position_after(Pane *pane, WPARAM wparam, LPARAM lparam);

// ---- Looks and the window (message_look.cpp) ----------------------------------------------------

LRESULT on_get_style_at(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_end_styled(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_start_styling(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_styling(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_colourise(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_take_no_notice(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_element_colour(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_style_clear_all(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_style_set_fore(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_style_set_bold(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_style_set_italic(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_style_set_size(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_style_set_font(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_style_set_hot_spot(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_style_get_fore(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_style_get_bold(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_style_get_italic(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_style_get_size(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_style_get_font(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_style_get_hot_spot(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_text_height(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_zoom(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_zoom(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_margin(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_mask(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_clear_key(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_wrap_mode(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_wrap_mode(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_wrap_count(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_caret_policy(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_vertical_bar(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_end_at_last_line(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_scroll_caret(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_first_visible(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_set_first_visible(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_lines_on_screen(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_visible_from_line(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_line_from_visible(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_ensure_visible(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_point_x(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_point_y(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_position_at(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_character_at(Pane *pane, WPARAM wparam, LPARAM lparam);
LRESULT on_get_focus(Pane *pane, WPARAM wparam, LPARAM lparam);
