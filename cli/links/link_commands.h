// The commands about links between cells, and those that search texts.
#pragma once

#include "cli/command_row.h"

extern const std::span<const CommandRow> k_link_commands;

int command_rename(const CommandLine &line);
int command_find(const CommandLine &line);
int command_replace(const CommandLine &line);
int command_links(const CommandLine &line);
int command_backlinks(const CommandLine &line);
int command_orphans(const CommandLine &line);
int command_deadends(const CommandLine &line);
int command_wanted(const CommandLine &line);
int command_path(const CommandLine &line);
int command_stats(const CommandLine &line);
int command_graph(const CommandLine &line);
