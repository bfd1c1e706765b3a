// The commands on whole webs; those on cells are in cli/cells/cell_commands.h. Each says what went
// wrong on standard error and returns an exit status (cli/exit_status.h).
#pragma once

#include "cli/command_line.h"

int command_new(const CommandLine &line);
int command_convert(const CommandLine &line);
int command_report(const CommandLine &line);
int command_check(const CommandLine &line);  // cli/check_output.cpp
