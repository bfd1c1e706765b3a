// New cell, follow, and Enter in the cellname box: the commands whose meaning depends on the pane
// that has the focus.
#pragma once

#include "shell/base/focus.h"

void make_new_cell();
void follow();

// Enter in the cellname box.
void enter_box_name();

// ---- Decisions ----------------------------------------------------------------------------------

// Where the two commands look for the name that they work on.
enum class NameSource {
    none,
    box,
    selection,
    dialog,
};

NameSource new_name_source(PaneIndex active);
NameSource follow_name_source(PaneIndex active);
