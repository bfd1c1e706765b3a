#include "cli/exchange/web_options.h"

#include "core/text.h"
#include "file/web_tags.h"
#include "web/option_text.h"

namespace {

constexpr std::string_view k_prefix = "option-";

// No option's text is longer, so that one finds room in any web.
constexpr size_t k_option_text_max = 400;

std::string key_of(uint32_t id) {
    return std::string(k_prefix) + web_tag_name(k_option_tags[id]);
}

void apply(OptionId id, const std::string &value) {
    const std::string text = value.substr(0, k_option_text_max);
    const BlockHandle block = text_from_bytes(text.data(), static_cast<uint32_t>(text.size()));
    option_apply_text(id, block);
    chain_free(block);
}

}  // namespace

std::vector<std::string> option_texts() {
    std::vector<std::string> texts;
    for (uint32_t id = 0; id < k_saved_option_count; ++id) {
        texts.emplace_back(option_value_text(static_cast<OptionId>(id)));
    }
    return texts;
}

Fields fields_of_options(const std::vector<std::string> &defaults) {
    const std::vector<std::string> texts = option_texts();
    Fields fields;
    for (uint32_t id = 0; id < k_saved_option_count; ++id) {
        if (texts[id] != defaults[id]) {
            fields.emplace_back(key_of(id), texts[id]);
        }
    }
    return fields;
}

// In the order of the web file: how a number is read hangs on options before it.
void apply_option_fields(const Fields &fields) {
    for (uint32_t id = 0; id < k_saved_option_count; ++id) {
        for (const auto &[key, value] : fields) {
            if (key == key_of(id)) {
                apply(static_cast<OptionId>(id), value);
            }
        }
    }
}
