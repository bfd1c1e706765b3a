// The commands of qvx. Each does its work on one web (`check` on one after another), says what went
// wrong on standard error and returns an exit status (cli/exit_status.h).
#pragma once

#include "cli/command_line.h"

int command_new(const CommandLine &line);
int command_list(const CommandLine &line);
int command_show(const CommandLine &line);
int command_set(const CommandLine &line);
int command_rm(const CommandLine &line);
int command_convert(const CommandLine &line);
int command_report(const CommandLine &line);
int command_check(const CommandLine &line);  // cli/check_output.cpp
