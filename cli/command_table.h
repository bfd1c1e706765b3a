// The commands of qvx as data. The parser, the man page and the shells' completions are made from
// it, so that none of them can know a command or an option that the others do not.
#pragma once

#include "cli/command_row.h"

std::span<const CommandGroup> command_groups();
