// What the settings sheet edits: a draft of the options, taken when the sheet opens and brought
// into force as a whole when it is closed with OK. Knows no window.
#pragma once

#include "web/options.h"

struct Settings {
    // Report
    uint8_t rtype;  // ReportType
    uint8_t rall;   // flag
    char rfmt[k_rfmt_max + 1];

    // Output. A web that is to be printed goes to the console.
    uint8_t odest;  // k_output_console or k_output_file
    uint8_t onewl;  // Newline
    char oname[k_oname_max + 1];

    // Links
    uint8_t link_colour;    // LinkColour
    uint8_t dclick_create;  // flag
    uint8_t dclick_ask;     // flag

    // Numbers
    uint8_t nfmt;  // NumberKind
    uint8_t nang;  // AngleUnit
    int32_t ndec;  // 0 to 8

    // Pane
    uint8_t bold;    // flag
    uint8_t italic;  // flag
    int32_t points;
    char font_name[k_font_name_max + 1];

    // Search
    uint8_t search_case;  // flag
    char starg[k_search_max + 1];
    char srpl[k_search_max + 1];
};

constexpr int32_t k_points_min = 4;
constexpr int32_t k_points_max = 72;

// What a change of settings calls for, as bits.
constexpr uint32_t k_effect_saved = 1;   // the web file changes
constexpr uint32_t k_effect_panes = 2;   // the panes look different
constexpr uint32_t k_effect_output = 4;  // reports go elsewhere

// Takes the options as they are.
void settings_load(Settings *draft);

// Sets the options that differ from the draft, and the web changed flag when one of them is kept in
// the web file. Returns the effects. An option that the draft leaves as it was keeps its value to
// the last bit.
uint32_t settings_apply(const Settings *draft);

// ---- What is allowed ----------------------------------------------------------------------------

// True when the text takes at most `capacity` bytes of UTF-8 and has none of the `forbidden`
// characters.
bool text_allowed(const wchar_t *text, uint32_t capacity, const wchar_t *forbidden);

// True for a whole number, blanks around it aside, from `least` to `most`; leaves it in `value`.
bool number_allowed(const wchar_t *text, int32_t least, int32_t most, int32_t *value);
