#include "cli/saved_options.h"

#include "cli/note.h"
#include "cli/print.h"
#include "web/option_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace {

// By OptionId: an option has its tag's name.
constexpr const char *k_names[k_saved_option_count] = {
#define SAVED_OPTION(type, name, ...) #name,
#include "web/options.def"
};

// The greatest count of an option that is kept in a byte, whatever its limit.
constexpr int32_t k_byte_max = 255;

OptionId find_option(const std::string &name) {
    uint32_t id = 0;
    while (id < k_saved_option_count && compare_names(k_names[id], name) != 0) {
        ++id;
    }
    return id < k_saved_option_count ? static_cast<OptionId>(id) : k_option_count;
}

std::string in_quotes(const std::string &value) {
    return "\"" + value + "\"";
}

// Only words that reading gives back.
std::string words_of(const OptionWord *word) {
    std::string words;
    for (; word->text[0] != 0; ++word) {
        if (word->reads == word->value) {
            words += (words.empty() ? "" : ", ") + std::string(word->text);
        }
    }
    return words;
}

std::string put_word(OptionId id, const std::string &value) {
    const OptionWord *const words = option_info(id)->words;
    for (const OptionWord *word = words; word->text[0] != 0; ++word) {
        if (word->reads == word->value && compare_names(word->text, value) == 0) {
            set_option(id, int32_t{word->value});
            return "";
        }
    }
    return in_quotes(value) + " is none of: " + words_of(words);
}

std::string put_text(OptionId id, const std::string &value) {
    const auto most = static_cast<size_t>(option_info(id)->most);
    if (value.size() > most) {
        return "the value has " + std::to_string(value.size()) + " characters, at most " +
               std::to_string(most) + " are kept";
    }
    if (value.find_first_of("\r\n") != std::string::npos) {
        return "a value is one line";
    }
    set_option(id, value.c_str());
    return "";
}

// The whole text as a number.
template <typename T> bool parse_whole(const std::string &text, T *number) {
    const char *end = text.data() + text.size();
    const auto [at, error] = std::from_chars(text.data(), end, *number);
    return error == std::errc() && at == end;
}

std::string put_count(OptionId id, const std::string &value) {
    const OptionInfo *info = option_info(id);
    const int32_t most = info->type == OptionType::one_byte
                             ? std::min(int32_t{info->most}, k_byte_max)
                             : int32_t{info->most};
    int32_t count = 0;
    if (!parse_whole(value, &count) || count < info->least || count > most) {
        return in_quotes(value) + " is no whole number from " + std::to_string(info->least) +
               " to " + std::to_string(most);
    }
    set_option(id, count);
    return "";
}

std::string put_number(OptionId id, const std::string &value) {
    double number = 0;
    if (!parse_whole(value, &number) || !std::isfinite(number)) {
        return in_quotes(value) + " is no number";
    }
    set_option(id, number);
    return "";
}

std::string put_value(OptionId id, const std::string &value) {
    const OptionInfo *info = option_info(id);
    if (info->words[0].text[0] != 0) {
        return put_word(id, value);
    }
    switch (info->type) {
    case OptionType::text:
        return put_text(id, value);
    case OptionType::number:
        return put_number(id, value);
    default:
        return put_count(id, value);
    }
}

double number_in(const std::string &text) {
    double number = 0;
    parse_whole(text, &number);
    return number;
}

// The file has numbers in the web's number format, which may leave out some of their digits.
std::string rounded_number(const SavedOptions &wanted) {
    for (uint32_t id = 0; id < k_saved_option_count; ++id) {
        const std::string kept = option_value_text(static_cast<OptionId>(id));
        if (option_info(static_cast<OptionId>(id))->type == OptionType::number &&
            number_in(kept) != number_in(wanted[id].value)) {
            return k_names[id] + (" " + wanted[id].value) + " would be kept as " + kept +
                   ": see nfmt and ndec";
        }
    }
    return "";
}

}  // namespace

SavedOptions saved_options() {
    SavedOptions options;
    for (uint32_t id = 0; id < k_saved_option_count; ++id) {
        options.push_back({k_names[id], option_value_text(static_cast<OptionId>(id))});
    }
    return options;
}

void print_option_differences(const SavedOptions &before, const SavedOptions &after) {
    for (size_t i = 0; i < before.size(); ++i) {
        if (before[i] != after[i]) {
            print_line("option " + before[i].name + ": " + before[i].value + " -> " +
                       after[i].value);
        }
    }
}

std::string option_name(const std::string &name) {
    const OptionId id = find_option(name);
    return id != k_option_count ? k_names[id] : "";
}

std::string option_value(const std::string &name) {
    return option_value_text(find_option(name));
}

bool put_option(const std::string &name, const std::string &value, std::string *fault) {
    const OptionId id = find_option(name);
    SavedOptions wanted = saved_options();
    *fault = put_value(id, value);
    if (fault->empty()) {
        wanted[id].value = value;
        *fault = rounded_number(wanted);
    }
    return fault->empty();
}
