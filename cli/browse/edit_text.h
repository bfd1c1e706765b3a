// A text in the user's own editor, while curses waits.
#pragma once

#include <string>

// Lets the user edit the text in $VISUAL or $EDITOR, or vi. False when the editor failed, or the
// text could not be brought to it or back; the text is then as it was, and what was edited stays in
// a file that `left` names ("" for none).
bool browse_edit_text(std::string *text, std::string *left);
