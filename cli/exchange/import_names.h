// Names of files and terms as cellnames.
#pragma once

#include "cli/exchange/import_sources.h"

#include <string_view>

// Gives each source the name of its cell; no two get one name. Names that a cell can have come
// first and stay, the others become the nearest that is free. With `linkable` a cell cannot have a
// name that no word of a text can be. Where nothing is called home, index or README becomes it, of
// those in no folder.
void name_sources(Sources *sources, bool linkable);

// The nearest cellname.
std::string cellname_near(std::string_view wanted, bool linkable);
