// The options: defaults, limits, and their spelling in web files.
#include "tests/engine/engine_test.h"

#include "core/text.h"
#include "web/option_tags.h"
#include "web/options.h"

using Options = EngineTest;

namespace {

// The value in a file after reading this text for a tag that stood at its default before.
std::string reread(int tag, const std::string &text) {
    option_defaults();
    BlockHandle block_text = text_from_cstring(text.c_str());
    option_apply_text(tag, block_text);
    chain_free(block_text);
    return option_value_text(tag);
}

}  // namespace

TEST_F(Options, DefaultsAsAFileHasThem) {
    const std::vector<std::pair<int, std::string>> defaults = {
        {k_tag_isrc, "keyboard"},
        {k_tag_iname, "INPUT"},
        {k_tag_iecho, "no"},
        {k_tag_odest, "screen"},
        {k_tag_oname, "OUTPUT"},
        {k_tag_onewl, "lf"},
        {k_tag_cfmt, "~\\n"},
        {k_tag_citer, "1"},
        {k_tag_cdisp, "nolist"},
        {k_tag_rtype, "fmt"},
        {k_tag_rfmt, "\\n*****\\N**************************\\n\\T\\n\\n"},
        {k_tag_rall, "yes"},
        {k_tag_starg, ""},
        {k_tag_srpl, ""},
        {k_tag_scount, "1"},
        {k_tag_sout, "yes"},
        {k_tag_nfmt, "general"},
        {k_tag_ndec, "2"},
        {k_tag_nang, "degrees"},
        {k_tag_pltng, "on"},
        {k_tag_xmax, "5"},
        {k_tag_xmin, "-5"},
        {k_tag_ymax, "5"},
        {k_tag_ymin, "-5"},
        {k_tag_xintrvls, "5"},
        {k_tag_yintrvls, "5"},
        {k_tag_xycells, "home,home"}};
    ASSERT_EQ(option_tag_count(), defaults.size());
    for (uint32_t i = 0; i < defaults.size(); ++i) {
        EXPECT_EQ(option_tag_at(i), defaults[i].first);
        EXPECT_EQ(option_value_text(option_tag_at(i)), defaults[i].second);
    }
    EXPECT_STREQ(option_value_text(k_tag_scrfont), "");
    EXPECT_STREQ(option_font_name(), "Tahoma");
    EXPECT_EQ(option_font_size(), 90);
    EXPECT_EQ(option_font_style() + option_link_colour() + option_search_case(), 0U);
    EXPECT_EQ(option_zoom(), 0);
    EXPECT_EQ(option_dclick_create() + option_dclick_ask(), 2);
    EXPECT_EQ(option_number_format()->width, 24);
    EXPECT_EQ(option_number_format()->point, '.');
}

TEST_F(Options, WordsAndNumbersAsTheyAreRead) {
    struct Row {
        int tag;
        const char *text, *value;
    };
    for (Row row : {Row{k_tag_isrc, "CELL", "cell"},
                    Row{k_tag_isrc, "file", "file"},
                    Row{k_tag_isrc, "cells", "keyboard"},
                    Row{k_tag_odest, "File", "file"},
                    Row{k_tag_odest, "print", "screen"},
                    Row{k_tag_onewl, "cr", "cr"},
                    Row{k_tag_onewl, "crlf", "crlf"},
                    Row{k_tag_iecho, "yes", "yes"},
                    Row{k_tag_rall, "No", "no"},
                    Row{k_tag_sout, "", "yes"},
                    Row{k_tag_cdisp, "list", "list"},
                    Row{k_tag_cdisp, "fmtlist", "fmtlist"},
                    Row{k_tag_rtype, "list", "fmt"},
                    Row{k_tag_rtype, "trail", "trail"},
                    Row{k_tag_nfmt, "fixed", "fixed"},
                    Row{k_tag_nfmt, "exponent", "exponent"},
                    Row{k_tag_nang, "radians", "radians"},
                    Row{k_tag_pltng, "off", "on"},
                    Row{k_tag_citer, "0", "1"},
                    Row{k_tag_citer, "-7", "1"},
                    Row{k_tag_scount, "32767", "32767"},
                    Row{k_tag_scount, "32768", "1"},
                    Row{k_tag_ndec, "12", "8"},
                    Row{k_tag_ndec, "-3", "0"},
                    Row{k_tag_ndec, "x", "0"},
                    Row{k_tag_xintrvls, "0", "1"},
                    Row{k_tag_xintrvls, "255", "255"},
                    Row{k_tag_yintrvls, "258", "2"},
                    Row{k_tag_yintrvls, "99999", "5"},
                    Row{k_tag_xmax, "1e3", "1e+03"},
                    Row{k_tag_ymin, "-0.25 m", "-0.25"},
                    Row{k_tag_xycells, "a,b", "a,b"},
                    Row{k_tag_scrfont, "x", ""}}) {
        EXPECT_EQ(reread(row.tag, row.text), row.value) << row.tag << " " << row.text;
    }
}

TEST_F(Options, WhatReadingNeverGivesIsWrittenAllTheSame) {
    set_option_odest(k_output_print);
    EXPECT_STREQ(option_value_text(k_tag_odest), "print");
    set_option_pltng(0);
    EXPECT_STREQ(option_value_text(k_tag_pltng), "off");
    set_option_rall(7);
    EXPECT_STREQ(option_value_text(k_tag_rall), "yes");
    set_option_rtype(9);
    EXPECT_STREQ(option_value_text(k_tag_rtype), "");
    set_option_nang(0);
    EXPECT_STREQ(option_value_text(k_tag_nang), "radians");
    set_option_scount(65535);
    EXPECT_STREQ(option_value_text(k_tag_scount), "65535");
}

TEST_F(Options, TextsAreCutAtTheirCapacity) {
    struct Row {
        int tag;
        size_t capacity;
    };
    for (Row row :
         {Row{k_tag_iname, 100}, Row{k_tag_oname, 48}, Row{k_tag_cfmt, 79}, Row{k_tag_rfmt, 256},
          Row{k_tag_starg, 48}, Row{k_tag_srpl, 48}, Row{k_tag_xycells, 256}}) {
        EXPECT_EQ(reread(row.tag, std::string(5000, 'x')), std::string(row.capacity, 'x'));
        EXPECT_EQ(reread(row.tag, "y"), "y");
    }
    set_option_font_name(std::string(300, 'f').c_str());
    EXPECT_EQ(option_font_name(), std::string(255, 'f'));
}

TEST_F(Options, SettersClampAndApply) {
    for (auto [set, stored] : {std::pair(25, 20), std::pair(-11, -10), std::pair(7, 7)}) {
        set_option_zoom(set);
        EXPECT_EQ(option_zoom(), stored);
    }
    set_option_nfmt(k_number_fixed);
    set_option_ndec(3);
    EXPECT_EQ(number_format_in_force()->kind, k_number_fixed);
    EXPECT_EQ(number_format_in_force()->digits, 3);
    EXPECT_STREQ(option_number_text(2), "2.000");
    EXPECT_STREQ(option_number_text(1e300), "1.000e+300");
}
