#include "web/option_text.h"

#include "core/text.h"

#include <cstring>

constexpr uint32_t k_element_text_max = 4095;

static struct OptionText {
    char text[k_element_text_max + 1];  // an element's text, or a count as it is written
    char number[k_number_text_max + 1];
} scratch;

namespace {

bool has_words(const OptionInfo *info) {
    return info->words[0].text[0] != 0;
}

const char *word_of(const OptionInfo *info, int32_t value) {
    const OptionWord *word = info->words;
    while (word->text[0] != 0 && word->value != value) {
        ++word;
    }
    return word->text;
}

const char *count_text(int32_t count) {
    int16_format(count, scratch.text);
    return scratch.text;
}

void apply_word(OptionId id, BlockHandle text) {
    for (const OptionWord *word = option_info(id)->words; word->text[0] != 0; ++word) {
        if (text_compare_cstring(text, word->text) == 0) {
            set_option(id, int32_t{word->reads});
            return;
        }
    }
}

void apply_count(OptionId id, const char *text) {
    const OptionInfo *info = option_info(id);
    int16_t count;
    if (int16_parse(text, &count) == 0) {
        set_option(id, int32_t{count < info->least  ? info->least
                               : count > info->most ? info->most
                                                    : count});
    }
}

void apply_number(OptionId id, const char *text) {
    double number;
    number_parse(text, &number);
    set_option(id, number);
}

}  // namespace

const char *option_value_text(OptionId id) {
    const OptionInfo *info = option_info(id);
    const OptionRecord *record = options_in_force();
    if (info->type == OptionType::text) {
        return option_string(record, id);
    }
    if (info->type == OptionType::number) {
        return option_number_text(option_number(record, id));
    }
    const int32_t value = option_integer(record, id);
    return has_words(info) ? word_of(info, value) : count_text(value);
}

void option_apply_text(OptionId id, BlockHandle text) {
    const OptionInfo *info = option_info(id);
    if (has_words(info)) {
        apply_word(id, text);
        return;
    }
    text_copy_out(scratch.text, text, k_element_text_max);
    if (info->type == OptionType::text) {
        set_option(id, scratch.text);
    } else if (info->type == OptionType::number) {
        apply_number(id, scratch.text);
    } else {
        apply_count(id, scratch.text);
    }
}

const char *option_number_text(double value) {
    memset(scratch.number, 0, sizeof scratch.number);
    number_format(scratch.number, value, number_format_in_force());
    return scratch.number;
}
