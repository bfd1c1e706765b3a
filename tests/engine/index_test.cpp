// The cell index, the cells' records and their values.
#include "tests/engine/engine_test.h"

#include "core/text.h"
#include "web/cells.h"
#include "web/links.h"
#include "web/options.h"
#include "web/trail.h"
#include "web/value.h"

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

TEST_F(Index, ValuesAreTextAndNumberInStep) {
    struct Row {
        const char *text;
        double number;
        uint8_t flags;
    };
    for (Row row : {Row{"abc", 0, 1}, Row{"3.50 kg", 3.5, 1}, Row{"{NxN}", 0, 3}, Row{"{NAN", 0, 1},
                    Row{"                         5", 0, 1}}) {  // 24 characters count
        BlockHandle value = val_from_text(text_from_cstring(row.text));
        EXPECT_EQ(val_number(value), row.number) << row.text;
        EXPECT_EQ(val_flags(value), row.flags) << row.text;
        block_set_next(value, val_from_text(text_from_cstring("next")));
        BlockHandle copy = val_copy(value);
        val_free(value);
        val_make_text(copy);
        EXPECT_EQ(text_string(val_text(copy)), row.text);
        EXPECT_EQ(text_string(val_text(block_next(copy))), "next");
        val_set_number(copy, 2.5);
        val_make_text(copy);
        EXPECT_EQ(text_string(val_text(copy)), "2.5");
        val_free(copy);
    }
}

TEST_F(Index, TheZoomIsClamped) {
    for (auto [set, stored] : {std::pair(25, 20), std::pair(-11, -10), std::pair(7, 7)}) {
        set_option_zoom(set);
        EXPECT_EQ(option_zoom(), stored);
    }
    option_defaults();
    EXPECT_EQ(option_zoom(), 0);
}
