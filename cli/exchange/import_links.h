// Links from file to file, as Markdown and its relatives have them.
#pragma once

#include "cli/exchange/import_sources.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

// The sources by what links call them, without suffix and regardless of case: whole paths, and the
// names of files alone.
struct LinkTargets {
    std::unordered_map<std::string, const Source *> by_path;
    std::unordered_map<std::string, const Source *> by_stem;
};

// The sources have to stay where they are.
LinkTargets link_targets_of(const Sources &sources);

// The name of the cell that a link in a file leads to; none where it leads elsewhere. What double
// brackets (`wiki`) name is a cell, although it may not be there yet.
std::optional<std::string> cell_of_link(const LinkTargets &targets, const Source &from,
                                        std::string_view target, bool wiki);
