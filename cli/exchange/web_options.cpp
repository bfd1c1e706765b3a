#include "cli/exchange/web_options.h"

#include "core/text.h"
#include "web/option_text.h"

namespace {

constexpr std::string_view k_prefix = "option-";

// No option's text is longer, so that one finds room in any web.
constexpr size_t k_option_text_max = 400;

std::string key_of(const std::string &name) {
    return std::string(k_prefix) + name;
}

void apply(OptionId id, const std::string &value) {
    const std::string text = value.substr(0, k_option_text_max);
    const BlockHandle block = text_from_bytes(text.data(), static_cast<uint32_t>(text.size()));
    option_apply_text(id, block);
    chain_free(block);
}

}  // namespace

Fields fields_of_options(const SavedOptions &defaults) {
    const SavedOptions options = saved_options();
    Fields fields;
    for (size_t i = 0; i < options.size(); ++i) {
        if (options[i] != defaults[i]) {
            fields.emplace_back(key_of(options[i].name), options[i].value);
        }
    }
    return fields;
}

// In the order of the web file: how a number is read hangs on options before it.
void apply_option_fields(const Fields &fields) {
    const SavedOptions options = saved_options();
    for (size_t i = 0; i < options.size(); ++i) {
        for (const auto &[key, value] : fields) {
            if (key == key_of(options[i].name)) {
                apply(static_cast<OptionId>(i), value);
            }
        }
    }
}
