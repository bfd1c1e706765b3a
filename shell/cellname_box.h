// The cellname box: the current cell's name in an editable field, the trail in its list.
#pragma once

#include "shell/base/platform.h"

#include <cstdint>

// Names read from the box, and from a pane's selection, are cut to this many bytes.
constexpr uint32_t k_read_name_max = 47;

// Makes the box and subclasses its edit field. The layout must have been computed.
void cellname_box_create(HWND parent);

HWND cellname_edit();

// Puts a name into the field. While the field has the focus all of it is selected, so that what is
// typed next replaces it.
void cellname_box_show(const char *name);
void cellname_box_show_current();

// The field's text, in one static buffer that the next call overwrites.
const char *cellname_box_name();

// True when the field holds the current cell's name, whole or as cut by reading.
bool cellname_box_is_current();

// Rolls the list up when it is dropped down.
void cellname_box_close_list();

// For CBN_DROPDOWN and CBN_SELCHANGE.
void cellname_box_fill_list();
void cellname_box_list_chosen();

// k_message_name_settled: the control has written its field, which gets the current name back; an
// open list gets the trail as it is now.
void cellname_box_settle();
