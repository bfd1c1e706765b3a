#include "web/options.h"

#include "core/strings.h"

#include <cstring>

namespace {

static struct Options {
    uint8_t isrc;
    uint8_t iecho;
    uint8_t odest;
    uint8_t onewl;
    int32_t citer;
    uint8_t cdisp;
    uint8_t rtype;
    uint8_t rall;
    int32_t scount;
    uint8_t sout;
    uint8_t nfmt;
    uint8_t ndec;
    uint8_t nang;
    uint8_t pltng;
    double xmax;
    double xmin;
    double ymax;
    double ymin;
    uint8_t xintrvls;
    uint8_t yintrvls;
    int32_t font_size;
    uint32_t font_style;
    int32_t zoom;
    uint8_t link_colour;
    uint8_t dclick_create;
    uint8_t dclick_ask;
    uint8_t search_case;
    NumberFormat number_format;
    char iname[k_iname_max + 1];
    char oname[k_oname_max + 1];
    char cfmt[k_cfmt_max + 1];
    char rfmt[k_rfmt_max + 1];
    char starg[k_search_max + 1];
    char srpl[k_search_max + 1];
    char xycells[k_xycells_max + 1];
    char font_name[k_font_name_max + 1];
    char scratch[k_number_text_max + 1];
} options;

// The rest of the field is cleared. The source may be the field itself.
void set_text(char *field, uint32_t capacity, const char *text) {
    uint32_t length = copy_string(field, text, capacity);
    memset(field + length, 0, capacity + 1 - length);
}

}  // namespace

#define DEFINE_OPTION(type, name)                                                                  \
    type option_##name() {                                                                         \
        return options.name;                                                                       \
    }                                                                                              \
    void set_option_##name(type value) {                                                           \
        options.name = value;                                                                      \
    }

DEFINE_OPTION(uint8_t, isrc)
DEFINE_OPTION(uint8_t, iecho)
DEFINE_OPTION(uint8_t, odest)
DEFINE_OPTION(uint8_t, onewl)
DEFINE_OPTION(int32_t, citer)
DEFINE_OPTION(uint8_t, cdisp)
DEFINE_OPTION(uint8_t, rtype)
DEFINE_OPTION(uint8_t, rall)
DEFINE_OPTION(int32_t, scount)
DEFINE_OPTION(uint8_t, sout)
DEFINE_OPTION(uint8_t, nang)
DEFINE_OPTION(uint8_t, pltng)
DEFINE_OPTION(double, xmax)
DEFINE_OPTION(double, xmin)
DEFINE_OPTION(double, ymax)
DEFINE_OPTION(double, ymin)
DEFINE_OPTION(uint8_t, xintrvls)
DEFINE_OPTION(uint8_t, yintrvls)
DEFINE_OPTION(int32_t, font_size)
DEFINE_OPTION(uint32_t, font_style)
DEFINE_OPTION(uint8_t, link_colour)
DEFINE_OPTION(uint8_t, dclick_create)
DEFINE_OPTION(uint8_t, dclick_ask)
DEFINE_OPTION(uint8_t, search_case)

#define DEFINE_TEXT_OPTION(name, capacity)                                                         \
    const char *option_##name() {                                                                  \
        return options.name;                                                                       \
    }                                                                                              \
    void set_option_##name(const char *value) {                                                    \
        set_text(options.name, capacity, value);                                                   \
    }

DEFINE_TEXT_OPTION(iname, k_iname_max)
DEFINE_TEXT_OPTION(oname, k_oname_max)
DEFINE_TEXT_OPTION(cfmt, k_cfmt_max)
DEFINE_TEXT_OPTION(rfmt, k_rfmt_max)
DEFINE_TEXT_OPTION(starg, k_search_max)
DEFINE_TEXT_OPTION(srpl, k_search_max)
DEFINE_TEXT_OPTION(xycells, k_xycells_max)
DEFINE_TEXT_OPTION(font_name, k_font_name_max)

uint8_t option_nfmt() {
    return options.nfmt;
}

void set_option_nfmt(uint8_t value) {
    options.nfmt = value;
    options.number_format.kind = value;
    number_format_set(&options.number_format);
}

uint8_t option_ndec() {
    return options.ndec;
}

void set_option_ndec(uint8_t value) {
    options.ndec = value;
    options.number_format.digits = value;
    number_format_set(&options.number_format);
}

int32_t option_zoom() {
    return options.zoom;
}

void set_option_zoom(int32_t value) {
    options.zoom = value < k_zoom_min ? k_zoom_min : value > k_zoom_max ? k_zoom_max : value;
}

const char *option_number_text(double value) {
    memset(options.scratch, 0, sizeof options.scratch);
    number_format(options.scratch, value, number_format_in_force());
    return options.scratch;
}

const NumberFormat *option_number_format() {
    return &options.number_format;
}

void option_defaults() {
    set_option_isrc(k_input_keyboard);
    set_option_iname("INPUT");
    set_option_iecho(0);
    set_option_odest(k_output_console);
    set_option_oname("OUTPUT");
    set_option_onewl(k_newline_lf);
    set_option_cfmt("~\\n");
    set_option_citer(1);
    set_option_cdisp(k_display_nolist);
    set_option_rtype(k_report_fmt);
    set_option_rfmt("\\n*****\\N**************************\\n\\T\\n\\n");
    set_option_rall(1);
    set_option_starg("");
    set_option_srpl("");
    set_option_scount(1);
    set_option_sout(1);
    options.number_format.width = k_number_text_max;
    options.number_format.point = '.';
    set_option_nfmt(k_number_general);
    set_option_ndec(2);
    set_option_nang(k_angle_degrees);
    set_option_pltng(1);
    set_option_xmax(5);
    set_option_xmin(-5);
    set_option_ymax(5);
    set_option_ymin(-5);
    set_option_xintrvls(5);
    set_option_yintrvls(5);
    set_option_xycells("home,home");
    set_option_font_name("Tahoma");
    set_option_font_size(90);
    set_option_font_style(0);
    set_option_zoom(0);
    set_option_link_colour(k_link_red);
    set_option_dclick_create(1);
    set_option_dclick_ask(1);
    set_option_search_case(0);
}
