#include "cli/merge/web_options.h"

#include <bit>
#include <cstring>

namespace {

// To the last bit, which a file may not show.
bool same_option(OptionId id, const OptionRecord &a, const OptionRecord &b) {
    switch (option_info(id)->type) {
    case OptionType::text:
        return strcmp(option_string(&a, id), option_string(&b, id)) == 0;
    case OptionType::number:
        return std::bit_cast<uint64_t>(option_number(&a, id)) ==
               std::bit_cast<uint64_t>(option_number(&b, id));
    default:
        return option_integer(&a, id) == option_integer(&b, id);
    }
}

void put(OptionId id, const OptionRecord &from) {
    switch (option_info(id)->type) {
    case OptionType::text:
        set_option(id, option_string(&from, id));
        break;
    case OptionType::number:
        set_option(id, option_number(&from, id));
        break;
    default:
        set_option(id, option_integer(&from, id));
        break;
    }
}

}  // namespace

WebOptions options_of_web() {
    return {*options_in_force(), saved_options()};
}

void take_options(const OptionRecord &record) {
    for (uint32_t id = 0; id < k_saved_option_count; ++id) {
        put(static_cast<OptionId>(id), record);
    }
}

// The record in force serves to put it together.
MergedOptions merge_options(const WebOptions &base, const WebOptions &ours,
                            const WebOptions &theirs) {
    MergedOptions merged;
    take_options(ours.record);
    for (uint32_t i = 0; i < k_saved_option_count; ++i) {
        const auto id = static_cast<OptionId>(i);
        const bool changed = !same_option(id, theirs.record, base.record);
        if (changed && same_option(id, ours.record, base.record)) {
            put(id, theirs.record);
        } else if (changed && !same_option(id, ours.record, theirs.record)) {
            merged.conflicts.push_back(i);
        }
    }
    merged.record = *options_in_force();
    return merged;
}
