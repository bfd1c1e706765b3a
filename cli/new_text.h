// The text that a command is given, on the command line, in a file or on standard input.
#pragma once

#include "cli/command_line.h"

#include <string>

// True when the command line has a text, or says where one is.
bool has_new_text(const CommandLine &line);

// Takes the text in; an exit status, after saying what is wrong with it. A text holds no NUL
// characters and no more than the arena.
int take_new_text(const CommandLine &line, std::string *text);

// The same for a file or, as "-", standard input.
int read_text_file(const std::string &name, std::string *text);
