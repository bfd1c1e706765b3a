// The options that a web file keeps, of several webs side by side.
#pragma once

#include "web/options.h"

#include <string>
#include <vector>

struct WebOptions {
    OptionRecord record;
    std::vector<std::string> texts;  // as the file has them, by OptionId
};

// Those of the web at hand, and back into it.
WebOptions options_of_web();
void take_options(const OptionRecord &record);

// The name that a web file has for it.
const char *option_tag(uint32_t id);

// The options three ways. Where both sides changed one, and not alike, it is ours; its id is among
// the conflicts.
struct MergedOptions {
    OptionRecord record;
    std::vector<uint32_t> conflicts;
};
MergedOptions merge_options(const WebOptions &base, const WebOptions &ours,
                            const WebOptions &theirs);
