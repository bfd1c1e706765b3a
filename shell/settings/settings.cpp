#include "shell/settings/settings.h"

#include "core/strings.h"
#include "platform/windows/text_conversion.h"
#include "web/cells.h"

#include <cstddef>
#include <cstring>

namespace {

// ---- The options as the sheet sees them ---------------------------------------------------------

uint8_t destination() {
    return option_odest() == k_output_file ? k_output_file : k_output_console;
}

uint8_t font_bit(uint32_t bit) {
    return (option_font_style() & bit) != 0 ? 1 : 0;
}

void set_font_bit(uint32_t bit, uint8_t on) {
    uint32_t others = option_font_style() & ~bit;
    set_option_font_style(on != 0 ? others | bit : others);
}

uint8_t bold() {
    return font_bit(k_font_bold);
}

uint8_t italic() {
    return font_bit(k_font_italic);
}

void set_bold(uint8_t on) {
    set_font_bit(k_font_bold, on);
}

void set_italic(uint8_t on) {
    set_font_bit(k_font_italic, on);
}

int32_t digits() {
    return option_ndec();
}

void set_digits(int32_t value) {
    set_option_ndec(static_cast<uint8_t>(value));
}

int32_t points() {
    return (option_font_size() + 5) / 10;
}

void set_points(int32_t value) {
    set_option_font_size(value * 10);
}

// ---- Tables: where each is in the draft, how it is read and set, what a change calls for --------

struct ByteSetting {
    size_t field;
    uint8_t (*get)();
    void (*set)(uint8_t value);
    uint32_t effects;
};

struct NumberSetting {
    size_t field;
    int32_t (*get)();
    void (*set)(int32_t value);
    uint32_t effects;
};

struct TextSetting {
    size_t field;
    uint32_t capacity;
    const char *(*get)();
    void (*set)(const char *value);
    uint32_t effects;
};

constexpr uint32_t k_saved = k_effect_saved;
constexpr uint32_t k_panes = k_effect_panes;
constexpr uint32_t k_output = k_effect_saved | k_effect_output;

const ByteSetting k_bytes[] = {
    {offsetof(Settings, rtype), option_rtype, set_option_rtype, k_saved},
    {offsetof(Settings, rall), option_rall, set_option_rall, k_saved},
    {offsetof(Settings, odest), destination, set_option_odest, k_output},
    {offsetof(Settings, onewl), option_onewl, set_option_onewl, k_output},
    {offsetof(Settings, link_colour), option_link_colour, set_option_link_colour, k_panes},
    {offsetof(Settings, dclick_create), option_dclick_create, set_option_dclick_create, 0},
    {offsetof(Settings, dclick_ask), option_dclick_ask, set_option_dclick_ask, 0},
    {offsetof(Settings, nfmt), option_nfmt, set_option_nfmt, k_saved},
    {offsetof(Settings, nang), option_nang, set_option_nang, k_saved},
    {offsetof(Settings, bold), bold, set_bold, k_panes},
    {offsetof(Settings, italic), italic, set_italic, k_panes},
    {offsetof(Settings, search_case), option_search_case, set_option_search_case, 0},
};

const NumberSetting k_numbers[] = {
    {offsetof(Settings, ndec), digits, set_digits, k_saved},
    {offsetof(Settings, points), points, set_points, k_panes},
};

const TextSetting k_texts[] = {
    {offsetof(Settings, rfmt), k_rfmt_max, option_rfmt, set_option_rfmt, k_saved},
    {offsetof(Settings, oname), k_oname_max, option_oname, set_option_oname, k_output},
    {offsetof(Settings, font_name), k_font_name_max, option_font_name, set_option_font_name,
     k_panes},
    {offsetof(Settings, starg), k_search_max, option_starg, set_option_starg, k_saved},
    {offsetof(Settings, srpl), k_search_max, option_srpl, set_option_srpl, k_saved},
};

template <typename T> T *at(Settings *draft, size_t field) {
    return reinterpret_cast<T *>(reinterpret_cast<char *>(draft) + field);
}

template <typename T> const T *at(const Settings *draft, size_t field) {
    return reinterpret_cast<const T *>(reinterpret_cast<const char *>(draft) + field);
}

// Sets what differs. Returns its effects.
template <typename T, typename Setting> uint32_t apply(const Setting &setting, T value) {
    if (value == setting.get()) {
        return 0;
    }
    setting.set(value);
    return setting.effects;
}

uint32_t apply_text(const TextSetting &setting, const char *value) {
    if (strcmp(value, setting.get()) == 0) {
        return 0;
    }
    setting.set(value);
    return setting.effects;
}

}  // namespace

void settings_load(Settings *draft) {
    for (const ByteSetting &one : k_bytes) {
        *at<uint8_t>(draft, one.field) = one.get();
    }
    for (const NumberSetting &one : k_numbers) {
        *at<int32_t>(draft, one.field) = one.get();
    }
    for (const TextSetting &one : k_texts) {
        copy_string(at<char>(draft, one.field), one.get(), one.capacity);
    }
}

uint32_t settings_apply(const Settings *draft) {
    uint32_t effects = 0;
    for (const ByteSetting &one : k_bytes) {
        effects |= apply(one, *at<uint8_t>(draft, one.field));
    }
    for (const NumberSetting &one : k_numbers) {
        effects |= apply(one, *at<int32_t>(draft, one.field));
    }
    for (const TextSetting &one : k_texts) {
        effects |= apply_text(one, at<char>(draft, one.field));
    }
    if ((effects & k_effect_saved) != 0) {
        set_web_changed(true);
    }
    return effects;
}

bool text_allowed(const wchar_t *text, uint32_t capacity, const wchar_t *forbidden) {
    return utf8_size(text) <= capacity && wcscspn(text, forbidden) == wcslen(text);
}

bool number_allowed(const wchar_t *text, int32_t least, int32_t most, int32_t *value) {
    while (*text == ' ') {
        ++text;
    }
    const wchar_t *first = text;
    int32_t number = 0;
    while (*text >= '0' && *text <= '9' && number <= most) {
        number = number * 10 + (*text++ - '0');
    }
    bool any = text != first;
    while (*text == ' ') {
        ++text;
    }
    if (!any || *text != 0 || number < least || number > most) {
        return false;
    }
    *value = number;
    return true;
}
