// The commands about links between cells, and those that search texts.
#pragma once

#include "cli/command_row.h"

extern const std::span<const CommandRow> k_link_commands;
