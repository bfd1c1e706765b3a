// The web in a terminal.
#pragma once

#include "cli/command_line.h"

int command_browse(const CommandLine &line);
