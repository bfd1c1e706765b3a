// Values, options, and the limits of the rings; what goes into them is the model test's.
#include "tests/engine/engine_test.h"

#include "web/links.h"

#include <cfloat>

using Parts = EngineTest;

TEST_F(Parts, ValuesAreTextAndNumberInStep) {
    struct Row {
        const char *text;
        double number;
        uint8_t flags;
    };
    for (Row row :
         {Row{"abc", 0, 1}, Row{"3.50 kg", 3.5, 1}, Row{"{NxN}", 0, 3}, Row{"{NAN", 0, 1},
          Row{"{nan}", 0, 1}, Row{" -1e999", -DBL_MAX, 1}, Row{"1e999", DBL_MAX, 1},
          Row{"\t\r+2e1", 20, 1}, Row{".5E-1x", 0.05, 1}, Row{"3.e1", 30, 1}, Row{"0x9", 0, 1},
          Row{"                         5", 0, 1}}) {  // 24 characters count
        BlockHandle value = val_from_text(text_from_cstring(row.text));
        EXPECT_EQ(val_number(value), row.number) << row.text;
        EXPECT_EQ(val_flags(value), row.flags) << row.text;
        block_set_next(value, val_from_text(text_from_cstring("next")));
        BlockHandle copy = val_copy(value);
        val_free(value);
        for (int twice = 0; twice < 2; ++twice) {
            val_make_number(copy);
            EXPECT_EQ(val_state(copy), k_value_number);
            val_make_text(copy);
            EXPECT_EQ(val_state(copy), k_value_text);
            EXPECT_EQ(text_string(val_text(copy)), row.text);
        }
        EXPECT_EQ(text_string(val_text(block_next(copy))), "next");
        val_free(copy);
    }
    for (auto [make, state] :
         {std::pair(&val_make_text, k_value_text), std::pair(&val_make_number, k_value_number)}) {
        BlockHandle value = val_from_text(text_alloc(0));
        make(value);
        EXPECT_EQ(val_state(value), state);
        val_make_text(value);
        EXPECT_EQ(text_string(val_text(value)), state == k_value_number ? "0" : "");
        val_free(value);
    }
}

TEST_F(Parts, OptionsClampApplyAndReturnToTheirDefaults) {
    for (auto [set, stored] : {std::pair(25, 20), std::pair(-11, -10), std::pair(7, 7)}) {
        set_option_zoom(set);
        EXPECT_EQ(option_zoom(), stored);
    }
    OptionRecord record = *options_in_force();
    for (const bool differs : {false, true, false}) {
        EXPECT_EQ(option_take(k_option_rfmt, &record), differs);
        EXPECT_EQ(option_take(k_option_citer, &record), differs);
        option_put(&record, k_option_rfmt, "taken");
        option_put(&record, k_option_citer, 7);
    }
    EXPECT_EQ(option_rfmt() + std::to_string(option_citer()), "taken7");
    set_option_font_name(std::string(300, 'f').c_str());
    EXPECT_EQ(option_font_name(), std::string(255, 'f'));
    set_option_nfmt(k_number_fixed);
    set_option_ndec(3);
    EXPECT_EQ(number_format_in_force()->digits, 3);
    option_defaults();
    EXPECT_STREQ(option_font_name(), "Tahoma");
    EXPECT_EQ(option_font_size(), 90);
    EXPECT_EQ(option_zoom(), 0);
    EXPECT_EQ(option_dclick_create() + option_dclick_ask(), 2);
}

TEST_F(Parts, BothRingsKeep31EntriesAndTheOddRepetition) {
    Names expected;
    for (int i = 0; i < 31; ++i) {
        expected.push_back("c" + std::to_string(i));
        CellHandle cell = make_cell(expected.back().c_str());
        for (auto *push : {trail_push, forward_push, trail_push, forward_push}) {
            push(cell);  // the last one counts twice: the rings are full
        }
    }
    expected.erase(expected.begin());
    expected.push_back("c30");
    EXPECT_EQ(trail_names(), expected);
    EXPECT_EQ(forward_names(), expected);
    while (forward_pop() != 0) {
    }
    forward_push(cell_lookup("c0"));
    EXPECT_EQ(forward_names(), Names{"c0"}) << "which the emptied ring still has in its slots";
}

TEST_F(Parts, CodesHaveMessages) {
    for (auto [code, message] :
         {std::pair(0, "NONESUCH"), std::pair(-20, "INTERNAL ERROR"),
          std::pair(-21, "Unexpected Error!"), std::pair(1, "Unexpected Error!")}) {
        EXPECT_STREQ(error_message(code), message);
    }
}

TEST_F(Parts, ZeroIsNoCell) {
    for (auto *step : {index_first, index_last, index_next, index_prev, next_live_cell}) {
        EXPECT_EQ(step(0), 0);
    }
    for (auto *act : {cell_delete, links_build, links_drop}) {
        act(0);
    }
    index_walk(0, cell_release_fields);
    EXPECT_STREQ(cell_name_string(0), "BAD_CELL_HANDLE");
    EXPECT_EQ(cell_create(index_root_address(), "HOME"), 0) << "which is there";
    for (const char *name : {"zoo", "home"}) {
        web_reset(name);
        EXPECT_EQ(cell_names(), Names{name});
    }
    refresh_views();
}
