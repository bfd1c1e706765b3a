// The commands that work on the whole terminal. A build without them links no_commands.cpp.
#pragma once

#include "cli/command_row.h"

extern const std::span<const CommandRow> k_browse_commands;
