// The web's options and the application's settings: one record, a getter and a setter a field.
//
// The fields with a tag of their own are saved with the web; the others hold until the next web is
// made or opened. web/option_tags.h says how each is spelled in a web file.
#pragma once

#include "core/numbers.h"

// Capacities of the text fields, in characters.
constexpr uint32_t k_iname_max = 100;
constexpr uint32_t k_oname_max = 48;
constexpr uint32_t k_cfmt_max = 79;
constexpr uint32_t k_rfmt_max = 256;
constexpr uint32_t k_search_max = 48;  // starg and srpl
constexpr uint32_t k_xycells_max = 256;
constexpr uint32_t k_font_name_max = 255;

constexpr int32_t k_zoom_min = -10;
constexpr int32_t k_zoom_max = 20;
constexpr uint8_t k_decimals_max = 8;

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

constexpr uint32_t k_font_bold = 1;  // bits of font_style
constexpr uint32_t k_font_italic = 2;

// Sets every field to its default.
void option_defaults();

// Declares `TYPE option_NAME()` and `void set_option_NAME(TYPE)`.
#define DECLARE_OPTION(type, name)                                                                 \
    type option_##name();                                                                          \
    void set_option_##name(type value)

// Saved with the web.
DECLARE_OPTION(uint8_t, isrc);    // InputSource
DECLARE_OPTION(uint8_t, iecho);   // flag
DECLARE_OPTION(uint8_t, odest);   // OutputDest
DECLARE_OPTION(uint8_t, onewl);   // Newline
DECLARE_OPTION(int32_t, citer);   // 1 or more
DECLARE_OPTION(uint8_t, cdisp);   // CellDisplay
DECLARE_OPTION(uint8_t, rtype);   // ReportType
DECLARE_OPTION(uint8_t, rall);    // flag
DECLARE_OPTION(int32_t, scount);  // 1 or more
DECLARE_OPTION(uint8_t, sout);    // flag
DECLARE_OPTION(uint8_t, nfmt);    // NumberKind; setting it applies the number format
DECLARE_OPTION(uint8_t, ndec);    // 0 to 8; setting it applies the number format
DECLARE_OPTION(uint8_t, nang);    // AngleUnit
DECLARE_OPTION(uint8_t, pltng);   // flag
DECLARE_OPTION(double, xmax);
DECLARE_OPTION(double, xmin);
DECLARE_OPTION(double, ymax);
DECLARE_OPTION(double, ymin);
DECLARE_OPTION(uint8_t, xintrvls);
DECLARE_OPTION(uint8_t, yintrvls);

// Texts: the getter's string belongs to the record; the setter copies and cuts at the field's
// capacity.
DECLARE_OPTION(const char *, iname);
DECLARE_OPTION(const char *, oname);
DECLARE_OPTION(const char *, cfmt);
DECLARE_OPTION(const char *, rfmt);
DECLARE_OPTION(const char *, starg);
DECLARE_OPTION(const char *, srpl);
DECLARE_OPTION(const char *, xycells);

// Not saved.
DECLARE_OPTION(const char *, font_name);
DECLARE_OPTION(int32_t, font_size);      // tenths of a point
DECLARE_OPTION(uint32_t, font_style);    // k_font_bold, k_font_italic
DECLARE_OPTION(int32_t, zoom);           // clamped to -10..20
DECLARE_OPTION(uint8_t, link_colour);    // LinkColour
DECLARE_OPTION(uint8_t, dclick_create);  // flag: create a cell on double click
DECLARE_OPTION(uint8_t, dclick_ask);     // flag: ask before that
DECLARE_OPTION(uint8_t, search_case);    // flag: find and replace match case

#undef DECLARE_OPTION

// The plot bounds as text, the way the web file has them: converted by the current number format
// into one buffer, which the next call overwrites. Setting reads a number from the text.
const char *option_number_text(double value);

// The requested number format (kind and digits mirror nfmt and ndec).
const NumberFormat *option_number_format();
