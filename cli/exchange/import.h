#pragma once

#include "cli/command_line.h"

int command_import(const CommandLine &line);
