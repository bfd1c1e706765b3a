// A text in the user's editor, by way of a private file that stays when its text is needed still.
#pragma once

#include <cstdint>
#include <string>

enum class Editing : uint8_t {
    done,       // the text is as the user left it; the file is there until drop_edited_file()
    unchanged,  // it is as it was
    failed,     // why has been said, and where a changed text is kept
    no_room     // so has been said that it is longer than any web can hold
};

// Runs the editor on the text, whose line ends are CR LF before and after, and as the system has
// them in between. The editor gets a line end behind a last line that has none, which does not
// become part of the text. Messages are about the subject ("FILE: CELL"). When `must_end` says that
// this program is to end, so does the editor.
Editing edit_text(const std::string &subject, std::string *text, bool (*must_end)() = nullptr);

// Says where the edited text is kept, when it is.
void name_edited_file();

// Removes the file: its text is in safety.
void drop_edited_file();
