#pragma once

#include "cli/command_line.h"

int command_export(const CommandLine &line);
