// The commands that bring a web into other formats, and make one of them.
#pragma once

#include "cli/command_row.h"

extern const std::span<const CommandRow> k_exchange_commands;
