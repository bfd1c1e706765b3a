// Block text; how any two compare, and names, are in tests/fuzz.
#include "tests/engine/engine_test.h"

using namespace std::string_literals;
using Text = EngineTest;

TEST_F(Text, ReplacingACellsTextTakesOnlyTheBlocksThatAreMissing) {
    std::vector<BlockHandle> blocks = leave_free_blocks(3);
    CellHandle home = index_root();
    for (uint32_t n : {107U, 20U, 0U, 36U, 35U, 72U, 71U, 107U}) {
        EXPECT_TRUE(cell_text_fits(home, n));
        const std::string text(n, static_cast<char>('a' + n % 26));
        cell_replace_text(home, text.data(), n);
        EXPECT_EQ(stored_text("home"), text);
        EXPECT_EQ(blocks_free(), 3 - (n == 0 ? 0 : n / 36 + 1));
    }
    const std::string longer(108, 'x');
    EXPECT_FALSE(run_command([&] { cell_replace_text(index_root(), longer.data(), 108); }));
    EXPECT_EQ(stored_text("home"), std::string(107, 'a' + 107 % 26));
    give_back(blocks);
}

TEST_F(Text, PartsAndCharacters) {
    BlockHandle text = text_alloc(5 * k_text_block_chars);  // a block a piece, however full
    BlockHandle block = text;
    for (const std::string &piece :
         {"ab"s, ""s, "cdefg"s, std::string(40, 'h'), "\xFE\x80"s, ""s}) {
        text_fill_block(block, piece.c_str(), 0);
        block = block_next(block);
    }
    const std::string all = "abcdefg" + std::string(36, 'h') + "\xFE\x80";
    EXPECT_EQ(text_string(text), all);
    EXPECT_EQ(text_length(text), all.size());
    EXPECT_TRUE(text_equals_cstring(text, all.c_str()));
    for (const std::string &other : {all + "x", all.substr(0, 44), "b" + all.substr(1), ""s}) {
        EXPECT_FALSE(text_equals_cstring(text, other.c_str()));
    }
    for (uint32_t from : {0U, 1U, 2U, 7U, 8U, 45U, 46U}) {
        for (uint32_t to : {0U, 6U, 44U, 99U}) {
            const size_t start = from == 0 ? 0 : from - 1;
            const std::string expected = start < to ? (all + "\n").substr(start, to - start) : "";
            BlockHandle part = text_substring(text, from, to);
            EXPECT_EQ(text_string(part), expected.substr(0, expected.find('\n')));
            EXPECT_EQ(part == 0, start >= to || start >= all.size());
            chain_free(part);
        }
    }
    EXPECT_EQ(text_substring(0, 1, 1), 0);
    char none = 0;
    EXPECT_EQ(text_copy_block(&none, text, 2, 2), 2U);
    text_reader_start(text);
    for (char c : all) {
        EXPECT_EQ(text_reader_next(), static_cast<signed char>(c));
    }
    EXPECT_EQ(text_reader_next(), k_reader_end);
    EXPECT_EQ(text_reader_next(), k_reader_past_end);
    block_ptr(text)[k_block_payload_at] = 0;
    text_reader_start(text);
    EXPECT_EQ(text_reader_next(), k_reader_end) << "which a zero reads as";
    EXPECT_EQ(text_reader_next(), 'b');
    EXPECT_EQ(text_compare(text, 0), 1);
    EXPECT_EQ(text_compare(0, text), -1);
    EXPECT_EQ(text_compare(0, 0) + text_compare_cstring(0, ""), 0);
    EXPECT_EQ(text_compare_cstring(0, "a"), -1);
    chain_free(text);
}
