// The block arena: the order of its handles, running short and running out.
#include "tests/engine/engine_test.h"

using Arena = EngineTest;

static const std::string k_question = "ask_ok_cancel Short On Memory--Save And Exit?|Quorvane";

static void alloc_one() {
    block_alloc(k_block_plain);
}

TEST_F(Arena, BelowAHundredBlocksEveryAllocationAsks) {
    host().logs_offers = true;
    std::vector<BlockHandle> blocks = leave_free_blocks(k_low_block_count);
    EXPECT_FALSE(low_on_blocks());
    for (int i = 0; i < 2; ++i) {
        blocks.push_back(block_alloc(k_block_text));
        EXPECT_EQ(take_log(), Log{k_question});
    }
    type_text(std::string(360, 'x'));
    host().ok_cancel = {true};
    EXPECT_EQ(run_until_end(alloc_one), 0);
    EXPECT_EQ(take_log(),
              (Log{k_question, "store 1", "hide_text_caret", "list_clear",
                   "ask_save_changes Save current changes in (untitled)?|Quorvane", "end 0"}));
    EXPECT_EQ(stored_text("home"), std::string(360, 'x'));
    start_program();
}

// The save was asked for and did not happen. Saving stored the pane from within the storing that
// brought the offer up: the text and the view state must be there once, and all of it.
TEST_F(Arena, AfterASaveThatWasCancelledTheProgramGoesOn) {
    std::vector<BlockHandle> blocks = leave_free_blocks(k_low_block_count);
    for (uint32_t size : {90 * k_text_block_chars, 98 * k_text_block_chars}) {
        block_free(cell_view_state(index_root()));
        cell_set_view_state(index_root(), 0);
        if (size < 98 * k_text_block_chars) {
            blocks.push_back(block_alloc(k_block_plain));  // or it is the second that asks
        }
        type_text(std::string(size, 'x'));
        host().ok_cancel = {true};
        host().save_changes = {true};
        ASSERT_TRUE(run_command([] { store_text_pane(1); }));
        EXPECT_EQ(stored_text("home"), std::string(size, 'x'));
        EXPECT_TRUE(host().save_changes.empty()) << "not offered again";
        EXPECT_EQ(blocks_free(), k_low_block_count - size / k_text_block_chars - 2);
    }
    // Storing the pane runs out in the middle of a text's making, which goes on.
    give_back(blocks);
    blocks = leave_free_blocks(k_low_block_count + 5);
    type_text(std::string(300 * k_text_block_chars, 'x'));
    host().ok_cancel = {true};
    host().save_changes = {true};
    const std::string text(20 * k_text_block_chars, 't');
    BlockHandle made = 0;
    EXPECT_TRUE(run_command([&] { made = text_from_cstring(text.c_str()); }));
    EXPECT_EQ(text_string(made), text);
    EXPECT_EQ(host().status, "OUT OF MEMORY");
    chain_free(made);
    give_back(blocks);
}

TEST_F(Arena, RunningOutDuringStartUpOrOutsideACommandEndsTheProgram) {
    std::vector<BlockHandle> blocks = leave_free_blocks(0);
    EXPECT_FALSE(run_command(alloc_one));
    EXPECT_FALSE(recovery_available()) << "outside of it";
    EXPECT_EQ(run_until_end(alloc_one), -1);
    block_arena_allow_recovery(false);
    EXPECT_EQ(run_until_end([] { run_command(alloc_one); }), -1);
    EXPECT_EQ(take_log().end()[-2], "warning OUT OF MEMORY|Quorvane");
    give_back(blocks);
}
