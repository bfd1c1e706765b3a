// Questions that all pages ask of the table of commands.
#pragma once

#include "cli/command_row.h"

#include <string>
#include <string_view>
#include <vector>

// "-n,--dry-run" is "-n" and "--dry-run".
std::vector<std::string> names_of(const OptionRow &row);

// True of an option that a value follows.
bool takes_value(const OptionRow &row);

// The words that a value is one of; none where it is free.
std::vector<std::string> words_of(const OptionRow &row);

// True of an argument that takes all that is left.
bool is_list(const ArgumentRow &row);

// What it takes, as the scripts call it: "web", "cell", "path", "folder" or "text".
const char *kind_name(Takes takes);

// Which argument names the web whose cells the others are: counted from 1.
int web_place(const CommandRow &row);

// All commands, in the order of help.
std::vector<const CommandRow *> all_commands();

// The words with a blank between two.
std::string joined(const std::vector<std::string> &words);

std::string replaced(std::string_view text, std::string_view what, std::string_view with);

// In single quotes, as sh, bash and zsh read them, and in those of fish, where a backslash counts.
std::string quoted(std::string_view text);
std::string fish_quoted(std::string_view text);
