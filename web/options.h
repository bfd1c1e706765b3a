// The web's options and the application's settings: one record, a getter and a setter a field.
// What there are, with their types, defaults, limits and words, is said in web/options.def.
#pragma once

#include "core/numbers.h"

enum InputSource : uint8_t { k_input_keyboard = 1, k_input_cell = 2, k_input_file = 3 };
enum OutputDest : uint8_t { k_output_console = 1, k_output_file = 2, k_output_print = 3 };
enum Newline : uint8_t { k_newline_lf = 1, k_newline_cr = 2, k_newline_crlf = 3 };
enum CellDisplay : uint8_t { k_display_list = 1, k_display_fmtlist = 2, k_display_nolist = 3 };
enum ReportType : uint8_t {
    k_report_fmt = 1,
    k_report_inptr = 2,
    k_report_outptr = 3,
    k_report_trail = 4
};
enum AngleUnit : uint8_t { k_angle_degrees = 1, k_angle_radians = 2 };
enum LinkColour : uint8_t { k_link_red = 0, k_link_green = 1, k_link_blue = 2, k_link_black = 3 };

constexpr int32_t k_font_bold = 1;  // bits of font_style
constexpr int32_t k_font_italic = 2;

// Sets every field to its default.
void option_defaults();

// TYPE option_NAME() and void set_option_NAME(TYPE). A text's getter gives the record's own string;
// the setter copies and cuts at the capacity.
#define OPTION(type, name, initial, least, most)                                                   \
    type option_##name();                                                                          \
    void set_option_##name(type value);
#include "web/options.def"

// k_NAME_min and k_NAME_max.
#define OPTION(type, name, initial, least, most)                                                   \
    constexpr int32_t k_##name##_min = least;                                                      \
    constexpr int32_t k_##name##_max = most;
#include "web/options.def"

// ---- Options by their ids, for those who treat them alike ---------------------------------------

enum OptionId : uint8_t {
#define OPTION(type, name, initial, least, most) k_option_##name,
#include "web/options.def"
    k_option_count
};

// The first of them are kept in the web file.
constexpr uint32_t k_saved_option_count = 0
#define SAVED_OPTION(...) +1
#include "web/options.def"
    ;

template <typename T, int32_t most> struct OptionField { using Stored = T; };
template <int32_t most> struct OptionField<const char *, most> {
    using Stored = char[static_cast<uint32_t>(most) + 1];
};

struct OptionRecord {
#define OPTION(type, name, initial, least, most) OptionField<type, most>::Stored name;
#include "web/options.def"
};

// How a value is written, and the value that reading it gives.
struct OptionWord {
    char text[9];  // "" behind the last one
    uint8_t value;
    uint8_t reads = value;
};

enum class OptionType : uint8_t { one_byte, integer, number, text };

struct OptionInfo {
    const OptionWord *words;
    uint16_t at;  // in the record
    OptionType type;
    int16_t least;
    int16_t most;
};

const OptionInfo *option_info(OptionId id);

const OptionRecord *options_in_force();

// A field of a record: whole numbers of both kinds, numbers, texts.
int32_t option_integer(const OptionRecord *record, OptionId id);
double option_number(const OptionRecord *record, OptionId id);
const char *option_string(const OptionRecord *record, OptionId id);

// Changes a record that is not in force: a whole number, a text.
void option_put(OptionRecord *record, OptionId id, int32_t value);
void option_put(OptionRecord *record, OptionId id, const char *value);

// What the setters do.
void set_option(OptionId id, int32_t value);
void set_option(OptionId id, double value);
void set_option(OptionId id, const char *value);

// Sets an option to a record's value. False when it has it already, to the last bit.
bool option_take(OptionId id, const OptionRecord *record);
