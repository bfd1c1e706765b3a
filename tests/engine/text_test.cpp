// Block text and names.
#include "tests/engine/engine_test.h"

#include "core/names.h"
#include "core/text.h"
#include "web/cell_text.h"
#include "web/cells.h"

#include <cstring>

using Text = EngineTest;

namespace {

// A chain of one block a piece, however full.
BlockHandle chain_of(const std::vector<std::string> &pieces) {
    BlockHandle head = text_alloc(static_cast<uint32_t>(pieces.size() - 1) * k_text_block_chars);
    BlockHandle h = head;
    for (const std::string &piece : pieces) {
        text_fill_block(h, piece.c_str(), 0);
        h = block_next(h);
    }
    return head;
}

std::string letters(uint32_t n) {
    std::string s(n, 0);
    for (uint32_t i = 0; i < n; ++i) {
        s[i] = static_cast<char>('a' + i % 26);
    }
    return s;
}

}  // namespace

TEST_F(Text, KeepsEveryLengthWhole) {
    for (uint32_t n : {0U, 1U, 35U, 36U, 37U, 72U, 4095U, 70000U}) {
        uint16_t before = blocks_in_use();
        BlockHandle text = text_from_cstring(letters(n).c_str());
        EXPECT_EQ(blocks_in_use(), before + n / 36 + 1);
        EXPECT_EQ(text_length(text), n % 65536);
        BlockHandle copy = text_duplicate(text);
        EXPECT_EQ(text_string(copy), letters(n));
        EXPECT_EQ(copy == 0, n == 0);
        chain_free(text);
        chain_free(copy);
    }
}

TEST_F(Text, ReplacingACellsTextTakesOnlyTheBlocksThatAreMissing) {
    std::vector<BlockHandle> blocks = leave_free_blocks(3);
    CellHandle home = index_root();
    for (uint32_t n : {107U, 20U, 0U, 36U, 35U, 72U, 71U, 107U}) {
        EXPECT_TRUE(cell_text_fits(home, n));
        cell_replace_text(home, letters(n).data(), n);
        EXPECT_EQ(text_of("home"), letters(n));
        EXPECT_EQ(blocks_free(), 3 - (n == 0 ? 0 : n / 36 + 1));
    }
    const std::string longer = letters(108);
    EXPECT_FALSE(run_command([&] { cell_replace_text(index_root(), longer.data(), 108); }));
    EXPECT_EQ(text_of("home"), letters(107));
    give_back(blocks);
}

TEST_F(Text, CopiesReadersAndSubstringsMindTheirLimits) {
    BlockHandle text = chain_of({"ab", "", "cdefg", std::string(36, 'h'), "\xFF\x80", ""});
    char buffer[64];
    EXPECT_EQ(text_copy_out(buffer, text, 4), 4U);
    EXPECT_STREQ(buffer, "abcd");
    const std::string all = text_string(text);
    for (auto [from, to] :
         {std::pair(1U, 3U), std::pair(2U, 4U), std::pair(7U, 99U), std::pair(46U, 99U)}) {
        BlockHandle part = text_substring(text, from, to);
        EXPECT_EQ(text_string(part), all.substr(from - 1, to - from + 1));
        EXPECT_EQ(part == 0, from > all.size());
        chain_free(part);
    }
    text_reader_start(text);
    for (char expected : all) {
        EXPECT_EQ(text_reader_next(), static_cast<signed char>(expected));
    }
    for (int expected : {-1, -2, -2}) {
        EXPECT_EQ(text_reader_next(), expected);
    }
    chain_free(text);
}

TEST_F(Text, TheBuilderStartsOver) {
    BlockHandle head = text_builder_start();
    text_builder_put_run(letters(73).data(), 73);
    EXPECT_EQ(text_string(head), letters(73));
    text_builder_restart();
    EXPECT_EQ(text_compare_cstring(head, ""), 0) << "what it held before must not count";
    text_builder_reset();
    chain_free(head);
}

// In the order of every list of cells; equal ones share a row. A text is the same however it lies
// in its blocks.
TEST_F(Text, Order) {
    const std::string name(36, 'n');
    const std::vector<Names> rows = {
        {""},           {"\x01"}, {" ", "_"}, {"_b", " B"}, {"0"},       {"A a"}, {"a_b"},
        {"ABC", "aBc"}, {"abcd"}, {name},     {name + "x"}, {"Z", "z"},  {"["},   {"`"},
        {"\x7F"},       {"\x80"}, {"\xE4"},   {"\xFF"},     {"\xFF\x01"}};
    auto sign = [](int value) { return (value > 0) - (value < 0); };
    for (size_t i = 0; i < rows.size(); ++i) {
        for (size_t j = 0; j < rows.size(); ++j) {
            for (const std::string &a : rows[i]) {
                BlockHandle x = text_from_cstring(a.c_str());
                BlockHandle gaps = chain_of({a.substr(0, 1), "", "", a.empty() ? "" : &a[1], ""});
                BlockHandle y = text_builder_start();  // no empty block behind 36 characters
                text_builder_put_run(rows[j][0].data(), static_cast<uint32_t>(rows[j][0].size()));
                for (BlockHandle h : {x, a.empty() ? x : gaps}) {
                    EXPECT_EQ(sign(text_compare(h, y)), (i > j) - (i < j)) << a << rows[j][0];
                    EXPECT_EQ(sign(text_compare(y, h)), (i < j) - (i > j)) << a << rows[j][0];
                    EXPECT_EQ(sign(text_compare_cstring(h, rows[j][0].c_str())), (i > j) - (i < j));
                    EXPECT_EQ(text_equals_cstring(h, rows[j][0].c_str()), a == rows[j][0]);
                }
                text_builder_reset();
                for (BlockHandle h : {x, gaps, y}) {
                    chain_free(h);
                }
            }
        }
    }
    EXPECT_EQ(text_compare(0, index_root()), -1);
    EXPECT_EQ(text_compare_cstring(0, "") | text_compare(0, 0), 0);
}

TEST(Names, NormaliseAndValid) {
    for (auto [typed, name] : {std::pair("12abc", "abc"), std::pair("__x_1", "x_1"),
                               std::pair("\xE4pfel!", "pfel!"), std::pair("123", "")}) {
        char buffer[80];
        strcpy(buffer, typed);
        EXPECT_FALSE(cellname_valid(buffer));
        cellname_normalise(buffer);
        EXPECT_STREQ(buffer, name);
    }
    char longer[80];
    strcpy(longer, letters(60).c_str());
    cellname_normalise(longer);
    EXPECT_EQ(longer, letters(48));
}
