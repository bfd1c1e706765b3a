#include "cli/browse/commands.h"

const std::span<const CommandRow> k_browse_commands;
