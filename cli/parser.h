// The command line, parsed by the table of commands.
#pragma once

#include "cli/command_table.h"

#include <string>
#include <vector>

// The command that was asked for, with `line` filled. Null when there is none to run: help, the
// version or what is wrong with the arguments has been printed, and `status` is the exit status.
const CommandRow *parse_command_line(std::vector<std::string> arguments, CommandLine *line,
                                     int *status);
