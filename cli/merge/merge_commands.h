// The commands for several versions of a web, and for damaged ones.
#pragma once

#include "cli/command_row.h"

extern const std::span<const CommandRow> k_merge_commands;

int command_diff(const CommandLine &line);    // cli/merge/versions.cpp
int command_text(const CommandLine &line);    // cli/merge/versions.cpp
int command_merge(const CommandLine &line);   // cli/merge/merge.cpp
int command_repair(const CommandLine &line);  // cli/merge/repair.cpp
