// The console pane takes report output: console_clear() and console_insert() of core/host_view.h.
#pragma once

// Shows what was inserted and not shown yet, and brings the caret behind it. Inserting does so ten
// times a second; this makes up for it when output ends.
void console_show_pending();
