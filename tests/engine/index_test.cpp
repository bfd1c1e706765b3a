// The cell index, the cells' records and their values.
#include "tests/engine/engine_test.h"

#include "core/numbers.h"
#include "core/text.h"
#include "web/cell_numbers.h"
#include "web/cells.h"
#include "web/index.h"
#include "web/link_list.h"
#include "web/links.h"
#include "web/option_text.h"
#include "web/options.h"
#include "web/trail.h"
#include "web/value.h"

#include <cfloat>

using Index = EngineTest;

// A tree that is a list: in name order forwards, backwards and to and fro.
TEST_F(Index, ListsAndClearsATreeOfAnyShape) {
    constexpr int k_cells = 3000;
    for (int shape = 0; shape < 3; ++shape) {
        for (int i = 0; i < k_cells; ++i) {
            int at = shape == 0 ? i : shape == 1 ? k_cells - i : i % 2 != 0 ? i : 2 * k_cells - i;
            std::string name = "n" + std::to_string(10000 + at);
            ASSERT_NE(index_find_or_insert(name.c_str(), index_root_address(), k_cell_live), 0);
        }
        cell_numbers_rebuild();
        EXPECT_EQ(check_engine(), "");
        std::vector<CellHandle> cells = live_cells();
        EXPECT_EQ(cells.size(), k_cells + 1U);
        CellHandle node = index_last(index_root());
        for (; !cells.empty() && node == cells.back(); node = index_prev(node)) {
            cells.pop_back();
        }
        EXPECT_TRUE(cells.empty() && node == 0) << "not the same backwards";
        web_reset("home");
        EXPECT_EQ(blocks_in_use(), 2);
        refresh_views();
    }
}

TEST_F(Index, TakesNoCellForAnAnswer) {
    for (auto *step : {index_first, index_last, index_next, index_prev, next_live_cell}) {
        EXPECT_EQ(step(0), 0);
    }
    index_walk(0, cell_release_fields);
    cell_delete(0);
    EXPECT_STREQ(cell_name_string(0), "BAD_CELL_HANDLE");
    EXPECT_STREQ(cell_name_string(index_root()), "home");
    EXPECT_EQ(cell_create(index_root_address(), "HOME"), 0);
    links_build(0);
    links_drop(0);
    EXPECT_EQ(link_list_next(0), nullptr);
}

// Any tree; kinds decide whether a name is taken.
TEST_F(Index, InsertsByNameTextToo) {
    CellHandle root = 0;
    cell_name_string(index_root());
    BlockHandle again = text_from_cstring("alpha");
    const CellHandle alpha = index_find_or_insert_text(again, &root, k_cell_live);
    again = text_from_cstring("ALPHA");
    EXPECT_EQ(root, alpha);
    EXPECT_EQ(index_find_or_insert_text(again, &root, k_cell_live), alpha);
    EXPECT_EQ(index_find_or_insert_text(again, &root, k_cell_deleted), 0);
    const CellHandle equal = index_insert(again, &root, k_cell_live);
    EXPECT_EQ(node_right(alpha), equal) << "an equal name goes to the right";
    cell_set_kind(equal, k_cell_deleted);
    EXPECT_STREQ(cell_name_string(equal), "home") << "the buffer stays as it was";
    cell_set_kind(alpha, k_cell_value_entry);
    EXPECT_EQ(index_find_or_insert("Alpha", &root, k_cell_live), 0);
    cell_set_text(alpha, val_from_text(text_from_cstring("12")));
    cell_release_fields(alpha);
    root = 0;
    EXPECT_EQ(index_link_new(alpha, &root), 0);
    EXPECT_EQ(index_link_new(equal, &root), alpha);
    for (CellHandle node : {alpha, equal}) {
        chain_free(cell_name(node));
        block_free(node);
    }
}

TEST_F(Index, ValuesAreTextAndNumberInStep) {
    struct Row {
        const char *text;
        double number;
        uint8_t flags;
    };
    for (Row row : {Row{"abc", 0, 1}, Row{"3.50 kg", 3.5, 1}, Row{"{NxN}", 0, 3}, Row{"{NAN", 0, 1},
                    Row{"{nan}", 0, 1}, Row{" -1e999", -DBL_MAX, 1},
                    Row{"                         5", 0, 1}}) {  // 24 characters count
        BlockHandle value = val_from_text(text_from_cstring(row.text));
        EXPECT_EQ(val_number(value), row.number) << row.text;
        EXPECT_EQ(val_flags(value), row.flags) << row.text;
        block_set_next(value, val_from_text(text_from_cstring("next")));
        BlockHandle copy = val_copy(value);
        val_free(value);
        for (int twice = 0; twice < 2; ++twice) {
            val_make_number(copy);
            val_make_text(copy);
            EXPECT_EQ(text_string(val_text(copy)), row.text);
        }
        EXPECT_EQ(text_string(val_text(block_next(copy))), "next");
        val_set_number(copy, 2.5);
        val_make_text(copy);
        EXPECT_EQ(text_string(val_text(copy)), "2.5");
        val_free(copy);
    }
    for (auto [make, state] :
         {std::pair(&val_make_text, k_value_text), std::pair(&val_make_number, k_value_number)}) {
        BlockHandle value = val_new();
        make(value);
        EXPECT_EQ(val_state(value), state);
        val_free(value);
    }
}

TEST_F(Index, OptionsClampApplyAndReturnToTheirDefaults) {
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
    EXPECT_EQ(option_number_format()->digits, 2);
    option_defaults();
    EXPECT_STREQ(option_font_name(), "Tahoma");
    EXPECT_EQ(option_font_size(), 90);
    EXPECT_EQ(option_zoom(), 0);
    EXPECT_EQ(option_dclick_create() + option_dclick_ask(), 2);
}
