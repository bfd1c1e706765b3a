// Block text and names.
#include "tests/engine/engine_test.h"

#include "core/names.h"
#include "core/text.h"
#include "web/cell_text.h"
#include "web/cells.h"
#include "web/words.h"

using Text = EngineTest;

namespace {

int sign(int value) {
    return (value > 0) - (value < 0);
}

uint32_t block_count(BlockHandle head) {
    uint32_t count = 0;
    for (BlockHandle h = head; h != 0; h = block_next(h)) {
        ++count;
    }
    return count;
}

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

std::string substring(BlockHandle text, uint32_t from, uint32_t to) {
    BlockHandle part = text_substring(text, from, to);
    std::string s = part == 0 ? "none" : text_string(part);
    chain_free(part);
    return s;
}

}  // namespace

TEST_F(Text, KeepsEveryLengthWhole) {
    for (uint32_t n : {0U, 1U, 35U, 36U, 37U, 71U, 72U, 73U, 4095U, 65536U, 70000U}) {
        uint16_t before = blocks_in_use();
        BlockHandle text = text_from_cstring(letters(n).c_str());
        EXPECT_EQ(block_count(text), n / 36 + 1);
        EXPECT_EQ(text_size(text), n);
        EXPECT_EQ(text_length(text), n % 65536);
        EXPECT_EQ(text_string(text), letters(n));
        BlockHandle copy = text_duplicate(text);
        EXPECT_EQ(text_string(copy), letters(n));
        EXPECT_EQ(copy == 0, n == 0);
        EXPECT_EQ(text_compare(text, copy), n == 0 ? 1 : 0);
        chain_free(text);
        chain_free(copy);
        EXPECT_EQ(blocks_in_use(), before);
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
    EXPECT_FALSE(cell_text_fits(home, 108));
    const std::string longer = letters(108);
    EXPECT_FALSE(run_command([&] { cell_replace_text(index_root(), longer.data(), 108); }));
    EXPECT_EQ(text_of("home"), letters(107));
    give_back(blocks);
}

TEST_F(Text, CopiesAndSubstringsMindTheirLimits) {
    BlockHandle text = chain_of({"ab", "", "cdefg", std::string(36, 'h'), ""});
    char buffer[64];
    EXPECT_EQ(text_copy_out(buffer, text, 4), 4U);
    EXPECT_STREQ(buffer, "abcd");
    EXPECT_EQ(text_copy_out(buffer, 0, 4), 0U);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(substring(text, 0, 3), "abc");
    EXPECT_EQ(substring(text, 2, 4), "bcd");
    EXPECT_EQ(substring(text, 7, 99), "g" + std::string(36, 'h'));
    EXPECT_EQ(substring(text, 4, 2), "none");
    EXPECT_EQ(substring(text, 44, 99), "none");
    EXPECT_EQ(substring(0, 1, 5), "none");
    chain_free(text);
}

TEST_F(Text, TheReaderSkipsEmptyBlocksAndEndsTwice) {
    BlockHandle text = chain_of({"", "a", "", "\xFF\x80", ""});
    text_reader_start(text);
    for (int expected : {int{'a'}, -1, -128, -1, -2, -2}) {
        EXPECT_EQ(text_reader_next(), expected);
    }
    text_reader_start(0);
    EXPECT_EQ(text_reader_next(), -2);
    chain_free(text);
}

TEST_F(Text, TheBuilderGrowsItsChainAndStartsOver) {
    BlockHandle head = text_builder_start();
    for (uint32_t i = 0; i < 73; ++i) {
        text_builder_put(letters(73)[i]);
    }
    EXPECT_EQ(text_string(head), letters(73));
    EXPECT_EQ(block_count(head), 3U);
    text_builder_restart();
    EXPECT_EQ(block_count(head), 1U);
    EXPECT_EQ(text_compare_cstring(head, ""), 0) << "what it held before must not count";
    text_builder_put_run("new", 3);
    EXPECT_EQ(text_string(head), "new");
    text_builder_reset();
    chain_free(head);
}

// In the order of every list of cells; equal ones share a row.
TEST_F(Text, Order) {
    const std::vector<std::vector<std::string>> rows = {
        {""},     {"\x01"},    {" ", "_"}, {"_b", " B"},   {"!"},
        {"0"},    {"9"},       {"A", "a"}, {"a_b", "A B"}, {"abc", "ABC", "aBc"},
        {"abcd"}, {"Z", "z"},  {"["},      {"^"},          {"`"},
        {"{"},    {"~"},       {"\x7F"},   {"\x80"},       {"\xE4"},
        {"\xFF"}, {"\xFF\x01"}};
    for (size_t i = 0; i < rows.size(); ++i) {
        for (size_t j = 0; j < rows.size(); ++j) {
            for (const std::string &a : rows[i]) {
                for (const std::string &b : rows[j]) {
                    BlockHandle x = text_from_cstring(a.c_str());
                    BlockHandle y = text_from_cstring(b.c_str());
                    int expected = (i > j) - (i < j);
                    EXPECT_EQ(sign(text_compare(x, y)), expected) << a << " " << b;
                    EXPECT_EQ(sign(text_compare_cstring(x, b.c_str())), expected) << a << " " << b;
                    chain_free(x);
                    chain_free(y);
                }
            }
        }
    }
}

TEST_F(Text, BytesFrom0x80UpCompareAsNegativeOnes) {
    BlockHandle text = text_from_cstring("\x80");
    EXPECT_EQ(text_compare_cstring(text, "a"), 0xFF80 - 'A');
    EXPECT_EQ(text_compare_cstring(text, "\xFF"), 0xFF80 - 0xFFFF);
    EXPECT_EQ(fold_char(0xE4), 0xE4);
    EXPECT_EQ(fold_char('_' + 0x100), ' ');
    chain_free(text);
}

TEST_F(Text, ComparisonSeesTheTextAndNotItsBlocks) {
    const std::string name(36, 'n');
    BlockHandle made = text_from_cstring(name.c_str());  // ends in an empty block
    BlockHandle read = text_builder_start();             // does not
    text_builder_put_run(name.data(), 36);
    BlockHandle gaps = chain_of({"nn", "", "", name.substr(2), ""});
    BlockHandle longer = chain_of({"", name + "", "x"});
    for (BlockHandle x : {made, read, gaps}) {
        for (BlockHandle y : {made, read, gaps}) {
            EXPECT_EQ(text_compare(x, y), 0);
        }
        EXPECT_EQ(text_compare_cstring(x, name.c_str()), 0);
        EXPECT_EQ(text_compare_cstring(x, (name + "x").c_str()), -1);
        EXPECT_EQ(text_compare_cstring(x, name.substr(1).c_str()), 1);
        EXPECT_TRUE(text_equals_cstring(x, name.c_str()));
        EXPECT_FALSE(text_equals_cstring(x, (name + "x").c_str()));
        EXPECT_FALSE(text_equals_cstring(x, name.substr(1).c_str()));
        EXPECT_EQ(text_compare(0, x), -1);
        EXPECT_EQ(text_compare(x, 0), 1);
    }
    EXPECT_EQ(text_compare(0, 0), 0);
    EXPECT_EQ(text_compare_cstring(0, ""), 0);
    EXPECT_EQ(text_compare_cstring(0, "a"), -1);
    for (BlockHandle x : {made, read, gaps, longer}) {
        chain_free(x);
    }
}

TEST(Names, NormaliseAndValid) {
    struct Row {
        std::string typed, name;
    };
    for (const Row &row : {Row{"12abc", "abc"}, Row{"__x_1", "x_1"}, Row{"123", ""}, Row{"", ""},
                           Row{letters(60), letters(48)}, Row{"  " + letters(48), letters(48)},
                           Row{"Note!", "Note!"}, Row{"\xE4pfel", "pfel"}, Row{"a b!", "a b!"}}) {
        char buffer[80];
        buffer[row.typed.copy(buffer, sizeof buffer)] = 0;
        cellname_normalise(buffer);
        EXPECT_EQ(buffer, row.name);
        EXPECT_EQ(cellname_valid(buffer), !row.name.empty());
    }
    EXPECT_FALSE(cellname_valid("1abc"));
    EXPECT_FALSE(cellname_valid("\xC4"));
    EXPECT_EQ(char_class('\xE4'), k_class_other);
}
