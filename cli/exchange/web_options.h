// The options of the web at hand as fields of a Markdown file's front matter.
#pragma once

#include "cli/exchange/front_matter.h"
#include "cli/saved_options.h"

// Those of the web at hand that differ from the defaults, which hold before a web is read.
Fields fields_of_options(const SavedOptions &defaults);

// Puts such fields into force; others are passed over.
void apply_option_fields(const Fields &fields);
