// The console pane takes report output: console_clear() and console_insert() of core/host.h.
#pragma once

// Brings the caret behind what was inserted last. Inserting does so at most ten times a second;
// this makes up for it when output ends.
void console_follow_output();
