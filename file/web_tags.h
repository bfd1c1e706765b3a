// The web file's tag names.
#pragma once

#include "web/option_tags.h"

constexpr unsigned k_tag_name_max = 8;  // characters of the longest name

// The name of a tag as it is written.
const char *web_tag_name(int tag);

// The index of a name, regardless of case, or -1.
int web_tag_find(const char *name);

// Whether a name is this lower-case one, regardless of case.
bool names_match(const char *name, const char *lower_case);
