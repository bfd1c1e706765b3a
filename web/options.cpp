#include "web/options.h"

#include "core/check.h"
#include "core/strings.h"

#include <cstddef>
#include <cstring>

static struct Options { OptionRecord record; } options;

namespace {

constexpr OptionWord k_no_words[] = {{"", 0}};

#define SAVED_OPTION(type, name, initial, least, most, tag, place, ...)                            \
    constexpr OptionWord k_##name##_words[] = {__VA_ARGS__ __VA_OPT__(, ){"", 0}};
#include "web/options.def"

constexpr bool every_value_has_a_word(const OptionWord *words, int32_t least, int32_t most) {
    for (int32_t value = least; words->text[0] != 0 && value <= most; ++value) {
        const OptionWord *word = words;
        while (word->text[0] != 0 && word->value != value) {
            ++word;
        }
        if (word->text[0] == 0) {
            return false;
        }
    }
    return true;
}

#define SAVED_OPTION(type, name, initial, least, most, ...)                                        \
    static_assert(every_value_has_a_word(k_##name##_words, least, most),                           \
                  "options.def: " #name " has a value without a word");
#include "web/options.def"

template <typename T> constexpr OptionType k_type_of = OptionType::text;
template <> constexpr OptionType k_type_of<uint8_t> = OptionType::one_byte;
template <> constexpr OptionType k_type_of<int32_t> = OptionType::integer;
template <> constexpr OptionType k_type_of<double> = OptionType::number;

#define OPTION_INFO(type, name, words, least, most)                                                \
    {words, offsetof(OptionRecord, name), k_type_of<type>, least, most},

constexpr OptionInfo k_info[k_option_count] = {
#define SAVED_OPTION(type, name, initial, least, most, ...)                                        \
    OPTION_INFO(type, name, k_##name##_words, least, most)
#define OPTION(type, name, initial, least, most) OPTION_INFO(type, name, k_no_words, least, most)
#include "web/options.def"
};

const void *field(const OptionRecord *record, OptionId id) {
    return reinterpret_cast<const char *>(record) + k_info[id].at;
}

void *field(OptionRecord *record, OptionId id) {
    return reinterpret_cast<char *>(record) + k_info[id].at;
}

void apply_number_format() {
    NumberFormat format = {options.record.nfmt, options.record.ndec, k_number_text_max, '.'};
    number_format_set(&format);
}

int32_t clamp(int32_t value, int32_t least, int32_t most) {
    return value < least ? least : value > most ? most : value;
}

bool is_whole_number(const OptionInfo &info) {
    return info.type == OptionType::one_byte || info.type == OptionType::integer;
}

// A byte with greater limits takes what they leave of a file's count, whatever its low bits are.
bool is_allowed(const OptionInfo &info, int32_t value) {
    const bool limited =
        info.most != 0 && (info.most <= UINT8_MAX || info.type != OptionType::one_byte);
    return !limited || (value >= info.least && value <= info.most);
}

}  // namespace

#define OPTION(type, name, initial, least, most)                                                   \
    type option_##name() {                                                                         \
        return options.record.name;                                                                \
    }                                                                                              \
    void set_option_##name(type value) {                                                           \
        set_option(k_option_##name, value);                                                        \
    }
#include "web/options.def"

const OptionInfo *option_info(OptionId id) {
    return &k_info[id];
}

const OptionRecord *options_in_force() {
    return &options.record;
}

int32_t option_integer(const OptionRecord *record, OptionId id) {
    CHECK(is_whole_number(k_info[id]));
    const void *from = field(record, id);
    return k_info[id].type == OptionType::one_byte ? *static_cast<const uint8_t *>(from)
                                                   : *static_cast<const int32_t *>(from);
}

double option_number(const OptionRecord *record, OptionId id) {
    return *static_cast<const double *>(field(record, id));
}

const char *option_string(const OptionRecord *record, OptionId id) {
    return static_cast<const char *>(field(record, id));
}

void option_put(OptionRecord *record, OptionId id, int32_t value) {
    CHECK(is_whole_number(k_info[id]));
    if (k_info[id].type == OptionType::one_byte) {
        *static_cast<uint8_t *>(field(record, id)) = static_cast<uint8_t>(value);
    } else {
        *static_cast<int32_t *>(field(record, id)) = value;
    }
}

// The rest of the field is cleared. The source may be the field itself.
void option_put(OptionRecord *record, OptionId id, const char *value) {
    char *to = static_cast<char *>(field(record, id));
    const uint32_t capacity = static_cast<uint32_t>(k_info[id].most);
    const uint32_t length = copy_string(to, value, capacity);
    memset(to + length, 0, capacity + 1 - length);
}

void set_option(OptionId id, int32_t value) {
    if (id == k_option_zoom) {
        value = clamp(value, k_zoom_min, k_zoom_max);
    }
    CHECK(is_allowed(k_info[id], value));
    option_put(&options.record, id, value);
    if (id == k_option_nfmt || id == k_option_ndec) {
        apply_number_format();
    }
}

void set_option(OptionId id, double value) {
    *static_cast<double *>(field(&options.record, id)) = value;
}

void set_option(OptionId id, const char *value) {
    option_put(&options.record, id, value);
}

bool option_take(OptionId id, const OptionRecord *record) {
    if (k_info[id].type == OptionType::text) {
        const char *value = option_string(record, id);
        const bool differs = strcmp(value, option_string(&options.record, id)) != 0;
        if (differs) {
            set_option(id, value);
        }
        return differs;
    }
    const int32_t value = option_integer(record, id);
    const bool differs = value != option_integer(&options.record, id);
    if (differs) {
        set_option(id, value);
    }
    return differs;
}

void option_defaults() {
#define OPTION(type, name, initial, least, most) set_option_##name(initial);
#include "web/options.def"
}
