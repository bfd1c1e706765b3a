// The block arena: the order of its handles, running short and running out.
#include "tests/engine/engine_test.h"

#include "core/block_arena.h"
#include "core/recovery.h"
#include "core/text.h"

using Arena = EngineTest;

TEST_F(Arena, BlocksComeInOrderAndTheLastReleasedComesFirst) {
    block_arena_init();
    for (uint32_t h = 1; h <= k_block_count; ++h) {
        host().quiet = true;
        ASSERT_EQ(block_alloc(k_block_plain), h);
        ASSERT_EQ(blocks_in_use(), h);
    }
    block_free(0);
    chain_free(0);
    EXPECT_EQ(blocks_free(), 0);
    block_free(7);
    block_free(k_block_count);
    EXPECT_EQ(block_alloc(k_block_text), k_block_count);
    EXPECT_EQ(block_alloc(k_block_text), 7);
    block_set_next(5, 3);
    block_set_next(3, 9);
    block_set_next(9, 0);
    chain_free(5);
    EXPECT_EQ(block_alloc(0), 9);
    EXPECT_EQ(block_alloc(0), 3);
    EXPECT_EQ(block_alloc(0), 5);
    start_program();
}
