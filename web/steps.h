// Steps from cell to cell in index order, from the list position (web/trail.h), wrapping at the
// ends. The cell stepped to becomes current and is shown and selected; where there is none, nothing
// happens.
#pragma once

void step_to_previous();
void step_to_next();
void step_to_first();
void step_to_last();

// Before the current cell goes: to the one before it, without storing the text pane.
void step_off_current_cell();
