// The commands that read and write the texts, scripts and values of cells as a person does.
#pragma once

#include "cli/command_line.h"

// cli/cells/show.cpp
int command_list(const CommandLine &line);
int command_show(const CommandLine &line);
int command_cat(const CommandLine &line);

// cli/cells/change.cpp
int command_set(const CommandLine &line);
int command_append(const CommandLine &line);
int command_rm(const CommandLine &line);

// cli/cells/fields.cpp
int command_script(const CommandLine &line);
int command_value(const CommandLine &line);
int command_option(const CommandLine &line);

// cli/cells/edit.cpp
int command_edit(const CommandLine &line);
