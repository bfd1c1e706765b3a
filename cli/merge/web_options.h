// The options that a web file keeps, of several webs side by side.
#pragma once

#include "cli/saved_options.h"
#include "web/options.h"

struct WebOptions {
    OptionRecord record;
    SavedOptions saved;  // as the file has them, by OptionId
};

// Those of the web at hand, and back into it.
WebOptions options_of_web();
void take_options(const OptionRecord &record);

// The options three ways. Where both sides changed one, and not alike, it is ours; its id is among
// the conflicts.
struct MergedOptions {
    OptionRecord record;
    std::vector<uint32_t> conflicts;
};
MergedOptions merge_options(const WebOptions &base, const WebOptions &ours,
                            const WebOptions &theirs);
