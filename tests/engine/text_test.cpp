// Block text; how any two compare, and names, are in tests/fuzz.
#include "tests/engine/engine_test.h"

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

TEST_F(Text, TheBuilderStartsOver) {
    BlockHandle head = text_builder_start();
    text_builder_put('x');
    text_builder_restart();
    EXPECT_EQ(text_compare_cstring(head, ""), 0) << "what it held before must not count";
    text_builder_reset();
    chain_free(head);
}

TEST_F(Text, IsTheSameHoweverItLiesInItsBlocks) {
    const std::string name(36, 'n');
    BlockHandle made = text_from_cstring(name.c_str());  // ends in an empty block
    BlockHandle read = text_builder_start();             // does not
    text_builder_put_run(name.data(), 36);
    BlockHandle gaps = chain_of({"nn", "", "", name.substr(2), ""});
    for (BlockHandle x : {made, read, gaps}) {
        for (BlockHandle y : {made, read, gaps}) {
            EXPECT_EQ(text_compare(x, y), 0);
        }
        for (auto [other, order] :
             {std::pair(name, 0), std::pair(name + "x", -1), std::pair(name.substr(1), 1)}) {
            EXPECT_EQ(text_compare_cstring(x, other.c_str()), order);
            EXPECT_EQ(text_equals_cstring(x, other.c_str()), order == 0);
        }
    }
    text_builder_reset();
    for (BlockHandle x : {made, read, gaps}) {
        chain_free(x);
    }
}
