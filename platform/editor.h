// Another program that the user edits a text with: which one, the file that it gets, and its run.
#pragma once

#include <string>

// The command of the user's editor, which may have arguments: $VISUAL, else $EDITOR, else one that
// is there; "" for none. In UTF-8.
std::string editor_command();

// Makes an empty file in the folder for temporary files, which nobody else may read and which ends
// in ".txt"; its path, or "" when errno says why not.
std::string private_text_file();

// Runs a command by the rules of the system's shell, with a path behind its own arguments, on the
// terminal of this program, and waits for its end. Meanwhile an interrupt from the keyboard is the
// command's alone. When a signal that this program catches has come and `must_end` says that it is
// to end, the command is told so, too. The command's exit status; -1 when no shell could be
// started, errno says why.
int run_on_file(const std::string &command, const std::string &path, bool (*must_end)() = nullptr);
