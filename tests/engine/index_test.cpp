// The cell index, the cells' records and their values.
#include "tests/engine/engine_test.h"

#include "core/numbers.h"
#include "core/text.h"
#include "web/cells.h"
#include "web/links.h"
#include "web/options.h"
#include "web/trail.h"
#include "web/value.h"

#include <algorithm>
#include <random>

using Index = EngineTest;
using Values = EngineTest;

namespace {

BlockHandle name_text(const std::string &name) {
    return text_from_cstring(name.c_str());
}

Names backwards() {
    Names names;
    for (CellHandle c = index_last(index_root()); c != 0; c = index_prev(c)) {
        names.push_back(name_string(c));
    }
    return names;
}

BlockHandle value_of(const char *text) {
    return val_from_text(text_from_cstring(text));
}

std::string value_text(BlockHandle value) {
    val_make_text(value);
    return text_string(val_text(value));
}

}  // namespace

TEST_F(Index, ListsCellsInFoldedOrder) {
    Names names;
    for (int i = 0; i < 400; ++i) {
        names.push_back((i % 2 != 0 ? "Cell_" : "cELL ") + std::to_string(i + 1000));
    }
    Names shuffled = names;
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(7));
    for (const std::string &name : shuffled) {
        ASSERT_NE(make_cell(name.c_str()), 0);
    }
    for (const char *name : {"Alpha", "beta", "my_cell", "Gamma"}) {
        make_cell(name);
    }
    names.insert(names.begin(), {"Alpha", "beta"});
    names.insert(names.end(), {"Gamma", "home", "my_cell"});
    EXPECT_EQ(cell_names(), names);
    std::reverse(names.begin(), names.end());
    EXPECT_EQ(backwards(), names);
    EXPECT_EQ(cell_lookup("MY CELL"), cell_lookup("my_cell"));
    EXPECT_EQ(cell_create(index_root_address(), "MY CELL"), 0);
    EXPECT_EQ(cell_lookup("my cel"), 0);
    EXPECT_EQ(check_engine(), "");
}

TEST_F(Index, TakesNoCellForAnAnswer) {
    for (auto *step :
         {index_first, index_last, index_next, index_prev, live_from, live_back_from}) {
        EXPECT_EQ(step(0), 0);
    }
    EXPECT_EQ(index_find(0, "home"), 0);
    EXPECT_EQ(index_find_text(0, 0), 0);
    EXPECT_EQ(cell_lookup_in(0, "home"), 0);
    index_walk(0, cell_release_fields);
    cell_delete(0);
    EXPECT_STREQ(cell_name_string(0), "BAD_CELL_HANDLE");
    EXPECT_STREQ(cell_name_string(index_root()), "home");
    CellHandle gone = make_cell("gone");
    host().items.erase(cell_list_item(gone));
    cell_delete(gone);
    EXPECT_STREQ(cell_name_string(gone), "home") << "the buffer stays as it was";
}

TEST_F(Index, InsertsByNameTextToo) {
    CellHandle root = 0;
    CellHandle alpha = index_find_or_insert_text(name_text("alpha"), &root, k_cell_live);
    EXPECT_EQ(root, alpha);
    BlockHandle again = name_text("ALPHA");
    EXPECT_EQ(index_find_or_insert_text(again, &root, k_cell_live), alpha);
    EXPECT_EQ(index_find_or_insert_text(again, &root, k_cell_deleted), 0);
    EXPECT_EQ(index_find_or_insert("Alpha", &root, k_cell_live), 0);
    cell_set_kind(alpha, k_cell_deleted);
    EXPECT_EQ(index_find_or_insert_text(again, &root, k_cell_live), 0);
    EXPECT_EQ(index_find_text(root, again), alpha);
    EXPECT_EQ(index_find_or_insert("Alpha", &root, k_cell_live), alpha);
    EXPECT_EQ(cell_kind(alpha), k_cell_live);
    CellHandle equal = index_insert(again, &root, k_cell_live);
    EXPECT_EQ(node_right(alpha), equal) << "an equal name goes to the right";
    cell_set_kind(alpha, k_cell_value_entry);
    EXPECT_EQ(index_find_or_insert("alpha", &root, k_cell_live), 0);
    cell_set_text(alpha, value_of("12"));
    uint16_t before = blocks_in_use();
    cell_release_fields(alpha);
    EXPECT_EQ(blocks_in_use(), before - 2);
    for (CellHandle node : {alpha, equal}) {
        chain_free(cell_name(node));
        block_free(node);
    }
}

TEST_F(Index, ADeletedCellComesBackInPlaceAndEmpty) {
    CellHandle cell = make_cell("alpha", std::string(100, 'x'));
    cell_set_script(cell, text_from_cstring("script"));
    cell_set_value(cell, value_of("12"));
    cell_set_first_aux(cell, block_alloc(k_block_plain));
    uint16_t full = blocks_in_use();
    host().items.erase(cell_list_item(cell));
    cell_delete(cell);
    EXPECT_EQ(blocks_in_use(), full - 3 - 1 - 2 - 1) << "all but the node and its name";
    EXPECT_EQ(cell_lookup("alpha"), 0);
    EXPECT_EQ(cell_names(), Names{"home"});
    EXPECT_EQ(check_engine(), "");
    EXPECT_EQ(make_cell("ALPHA"), cell);
    EXPECT_EQ(text_of("alpha"), "");
    EXPECT_EQ(cell_script(cell) | cell_value(cell) | cell_first_aux(cell), 0);
    EXPECT_EQ(name_string(cell), "alpha");
}

TEST_F(Index, AnOutPointerListIsForgottenWhenItsCellIsDeleted) {
    CellHandle cell = make_cell("alpha", "home home home home home home home home");
    links_build(cell);
    host().items.erase(cell_list_item(cell));
    cell_delete(cell);
    lost_blocks = 3;  // a header and two blocks of entries
}

// A tree that is a list: in name order forwards, backwards and to and fro.
TEST_F(Index, ClearsATreeOfAnyShape) {
    for (int shape = 0; shape < 3; ++shape) {
        constexpr int k_cells = 3000;
        for (int i = 0; i < k_cells; ++i) {
            int at = shape == 0 ? i : shape == 1 ? k_cells - i : i % 2 != 0 ? i : 2 * k_cells - i;
            char name[8];
            snprintf(name, sizeof name, "n%05d", at);
            ASSERT_NE(index_find_or_insert(name, index_root_address(), k_cell_live), 0);
        }
        cell_numbers_rebuild();
        EXPECT_EQ(cell_names().size(), k_cells + 1U);
        cell_delete(index_last(index_root()));
        EXPECT_EQ(check_engine(), "");
        if (shape == 2) {
            web_clear();
            EXPECT_EQ(index_root(), 0);
            EXPECT_EQ(current_cell(), 0);
            EXPECT_EQ(blocks_in_use(), 0);
        }
        web_reset("home");
        EXPECT_EQ(blocks_in_use(), 2);
        EXPECT_EQ(current_name(), "home");
        refresh_views();
    }
}

TEST_F(Values, AreTextAndNumberInStep) {
    struct Row {
        const char *text;
        double number;
        uint8_t flags;
        const char *back;  // the text after the number changed its form
    };
    for (Row row :
         {Row{"abc", 0, 1, "abc"}, Row{"3.50 kg", 3.5, 1, "3.50 kg"}, Row{"{NAN}", 0, 3, "{NAN}"},
          Row{"{NxN}", 0, 3, "{NxN}"}, Row{"{NAN", 0, 1, "{NAN"}, Row{" -12", -12, 1, " -12"},
          // beyond 24 characters a text counts for nothing
          Row{"                         5", 0, 1, "                         5"}}) {
        BlockHandle value = value_of(row.text);
        EXPECT_EQ(val_state(value), k_value_number);
        EXPECT_EQ(val_number(value), row.number) << row.text;
        EXPECT_EQ(val_flags(value), row.flags) << row.text;
        EXPECT_EQ(value_text(value), row.back);
        BlockHandle copy = val_copy(value);
        val_free(value);
        EXPECT_EQ(value_text(copy), row.back);
        EXPECT_EQ(val_flags(copy), row.flags);
        val_free(copy);
    }
}

TEST_F(Values, MakeTheOtherFormWhenItIsOutOfStep) {
    BlockHandle value = val_new();
    EXPECT_EQ(val_state(value), k_value_empty);
    val_make_text(value);
    EXPECT_EQ(val_state(value), k_value_text);
    EXPECT_EQ(val_text(value), 0);
    set_option_nfmt(k_number_fixed);
    set_option_ndec(3);
    val_set_number(value, 2.0);
    EXPECT_EQ(value_text(value), "2.000");
    val_set_text(value, text_from_cstring("{NaN}"));
    val_make_number(value);
    EXPECT_EQ(val_flags(value), k_value_in_step | k_value_nan);
    val_set_text(value, text_from_cstring("7"));
    val_make_number(value);
    EXPECT_EQ(val_number(value), 7);
    EXPECT_EQ(val_flags(value), k_value_in_step);
    val_free(value);
    BlockHandle none = val_from_text(0);
    EXPECT_EQ(val_state(none), k_value_empty);
    val_free(none);
    BlockHandle empty = value_of("");
    EXPECT_EQ(val_state(empty), k_value_empty);
    val_free(empty);
}

TEST_F(Values, CopyAsChains) {
    BlockHandle first = value_of("1");
    BlockHandle second = value_of("two");
    block_set_next(first, second);
    uint16_t before = blocks_in_use();
    BlockHandle copy = val_copy(first);
    EXPECT_EQ(blocks_in_use(), before + 4);
    EXPECT_EQ(value_text(block_next(copy)), "two");
    EXPECT_EQ(block_next(block_next(copy)), 0);
    EXPECT_EQ(val_copy(0), 0);
    val_free(copy);
    val_free(first);
}
