// Block text and names.
#include "tests/engine/engine_test.h"

#include "core/names.h"
#include "core/text.h"
#include "web/cell_text.h"
#include "web/cells.h"

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

TEST_F(Text, SubstringsMindTheirLimits) {
    BlockHandle text = chain_of({"ab", "", "cdefg", std::string(36, 'h'), "\xFF\x80", ""});
    const std::string all = text_string(text);
    for (uint32_t from : {1U, 2U, 7U, 8U, 46U}) {
        BlockHandle part = text_substring(text, from, from + 40);
        EXPECT_EQ(text_string(part), all.substr(from - 1, 41));
        EXPECT_EQ(part == 0, from > all.size());
        chain_free(part);
    }
    chain_free(text);
}

TEST_F(Text, TheBuilderStartsOver) {
    BlockHandle head = text_builder_start();
    text_builder_put('x');
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
        for (const std::string &a : rows[i]) {
            BlockHandle x = text_from_cstring(a.c_str());
            BlockHandle gaps = chain_of({a.substr(0, 1), "", "", a.empty() ? "" : &a[1], ""});
            for (size_t j = 0; j < rows.size(); ++j) {
                const std::string &b = rows[j][0];
                int order = static_cast<int>(i) - static_cast<int>(j);
                BlockHandle y = text_builder_start();  // no empty block behind 36 characters
                text_builder_put_run(b.data(), static_cast<uint32_t>(b.size()));
                for (BlockHandle h : {x, a.empty() ? x : gaps}) {
                    EXPECT_EQ(sign(text_compare(h, y)), sign(order)) << a << " " << b;
                    EXPECT_EQ(sign(text_compare_cstring(h, b.c_str())), sign(order))
                        << a << " " << b;
                    EXPECT_EQ(text_equals_cstring(h, b.c_str()), a == b);
                }
                chain_free(y);
            }
            chain_free(x);
            chain_free(gaps);
        }
    }
    text_builder_reset();
}

TEST(Names, Normalise) {
    for (auto [typed, name] : {std::pair("12abc", "abc"), std::pair("\xE4pfel!", "pfel!"),
                               std::pair("__x_1", "x_1"), std::pair("123", "")}) {
        std::string buffer = typed;
        cellname_normalise(buffer.data());
        EXPECT_STREQ(buffer.c_str(), name);
    }
    std::string longer = letters(60);
    cellname_normalise(longer.data());
    EXPECT_STREQ(longer.c_str(), letters(48).c_str());
}
