// The options' defaults and limits; their spelling in files is tested with the reader and writer.
#include "tests/engine/engine_test.h"

#include "core/numbers.h"
#include "web/options.h"

using Options = EngineTest;

TEST_F(Options, ClampApplyAndReturnToTheirDefaults) {
    for (auto [set, stored] : {std::pair(25, 20), std::pair(-11, -10), std::pair(7, 7)}) {
        set_option_zoom(set);
        EXPECT_EQ(option_zoom(), stored);
    }
    set_option_font_name(std::string(300, 'f').c_str());
    EXPECT_EQ(option_font_name(), std::string(255, 'f'));
    set_option_nfmt(k_number_fixed);
    set_option_ndec(3);
    EXPECT_STREQ(option_number_text(2), "2.000");
    set_option_ndec(16);
    EXPECT_EQ(number_format_in_force()->digits, 2);
    option_defaults();
    EXPECT_STREQ(option_font_name(), "Tahoma");
    EXPECT_EQ(option_font_size(), 90);
    EXPECT_EQ(option_zoom(), 0);
    EXPECT_EQ(option_dclick_create() + option_dclick_ask(), 2);
}
