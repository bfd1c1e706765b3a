// What the commands about links and searching do: each on one web or on one after another; an exit
// status (cli/exit_status.h).
#pragma once

#include "cli/command_line.h"

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
