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

}  // namespace

TEST_F(Text, ReplacingACellsTextTakesOnlyTheBlocksThatAreMissing) {
    std::vector<BlockHandle> blocks = leave_free_blocks(3);
    CellHandle home = index_root();
    for (uint32_t n : {107U, 20U, 0U, 36U, 35U, 72U, 71U, 107U}) {
        EXPECT_TRUE(cell_text_fits(home, n));
        const std::string text(n, static_cast<char>('a' + n % 26));
        cell_replace_text(home, text.data(), n);
        EXPECT_EQ(text_of("home"), text);
        EXPECT_EQ(blocks_free(), 3 - (n == 0 ? 0 : n / 36 + 1));
    }
    const std::string longer(108, 'x');
    EXPECT_FALSE(run_command([&] { cell_replace_text(index_root(), longer.data(), 108); }));
    EXPECT_EQ(text_of("home"), std::string(107, 'a' + 107 % 26));
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
