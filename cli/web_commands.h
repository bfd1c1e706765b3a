// The commands that make, read and change a web cell by cell, convert, report and check it.
#pragma once

#include "cli/command_row.h"

extern const std::span<const CommandRow> k_web_commands;
