// The options of the web at hand as fields of a Markdown file's front matter.
#pragma once

#include "cli/exchange/front_matter.h"

// As the web file has them, in its order. Before a web is read they are the defaults.
std::vector<std::string> option_texts();

// Those that differ from the defaults, with the web at hand.
Fields fields_of_options(const std::vector<std::string> &defaults);

// Puts such fields into force; others are passed over.
void apply_option_fields(const Fields &fields);
