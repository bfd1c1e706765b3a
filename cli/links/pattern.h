// What find and replace look for: a text or a regular expression, matched within one line.
#pragma once

#include "cli/command_line.h"
#include "cli/links/spans.h"

#include <string_view>

// Prepares `line.wanted` as the options say, one pattern a run; k_exit_failed after saying what is
// wrong with it.
int pattern_compile(const CommandLine &line);

enum class Matched { no, yes, gave_up };

// The first match at or behind `from`, which may be empty. A match that would take millions of
// steps is given up.
Matched pattern_find(std::string_view line, size_t from, Span *match);

// Every match of the line that is not empty, into *spans; `yes` when there is any, empty or not.
Matched pattern_find_all(std::string_view line, Spans *spans);
