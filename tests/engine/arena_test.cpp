// The block arena: the order of its handles, running short and running out.
#include "tests/engine/engine_test.h"

#include "core/block_arena.h"
#include "core/recovery.h"
#include "core/text.h"
#include "web/cell_text.h"
#include "web/cells.h"
#include "web/trail.h"

#include <cstring>

using Arena = EngineTest;

namespace {

const std::string k_question = "ask_ok_cancel Short On Memory--Save And Exit?|Quorvane";

int recover(void (*body)(void *), void *argument = nullptr) {
    return recovery_run(body, argument);
}

}  // namespace

TEST_F(Arena, BlocksComeInOrderAndTheLastReleasedComesFirst) {
    web_clear();
    block_arena_init();
    host().quiet = true;
    for (uint32_t h = 1; h <= k_block_count; ++h) {
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
    for (int h : {9, 3, 5}) {
        EXPECT_EQ(block_alloc(k_block_plain), h);
    }
    start_program();
}

TEST_F(Arena, TheTypeDecidesWhatIsCleared) {
    struct Row {
        uint8_t type;
        bool cleared;
    };
    for (Row row : {Row{0, true}, Row{16, true}, Row{32, true}, Row{64, true}, Row{128 + 16, true},
                    Row{5, false}}) {
        BlockHandle h = block_alloc(k_block_plain);
        memset(block_ptr(h), 0xAA, k_block_size);
        block_free(h);
        BlockHandle next = block_next(h);
        ASSERT_EQ(block_alloc(row.type), h);
        EXPECT_EQ(block_ptr(h)[k_block_type_at], row.type);
        EXPECT_EQ(block_used(h), 0);
        EXPECT_EQ(block_next(h), row.cleared ? 0 : next);
        for (uint32_t at = k_block_payload_at; at < k_block_size; ++at) {
            ASSERT_EQ(block_ptr(h)[at], row.cleared ? 0 : 0xAA);
        }
        block_free(h);
    }
}

TEST_F(Arena, BelowAHundredBlocksEveryAllocationAsks) {
    std::vector<BlockHandle> blocks = leave_free_blocks(k_low_block_count);
    host().quiet = false;
    EXPECT_FALSE(low_on_blocks());
    for (int i = 0; i < 3; ++i) {
        blocks.push_back(block_alloc(k_block_text));
        EXPECT_EQ(take_log(), Log{k_question});
        EXPECT_TRUE(low_on_blocks());
    }
    give_back(blocks);
    block_free(block_alloc(k_block_plain));
    EXPECT_EQ(take_log(), Log());
    EXPECT_TRUE(low_on_blocks());
}

TEST_F(Arena, SayingOkSavesAndEnds) {
    type_text(std::string(360, 'x'));
    std::vector<BlockHandle> blocks = leave_free_blocks(k_low_block_count);
    host().quiet = false;
    host().ok_cancel = {true};
    EXPECT_EQ(run_until_end([] { block_alloc(k_block_plain); }), 0);
    EXPECT_EQ(take_log(),
              (Log{k_question, "store 1", "hide_text_caret", "list_clear",
                   "ask_save_changes Save current changes in (untitled)?|Quorvane", "end 0"}));
    EXPECT_EQ(text_of("home"), std::string(360, 'x'));
    start_program();
}

// The save was asked for and did not happen. Saving stored the pane from within the storing that
// brought the offer up: the text must be there once, and all of it.
TEST_F(Arena, AfterASaveThatWasCancelledTheProgramGoesOn) {
    std::vector<BlockHandle> blocks = leave_free_blocks(k_low_block_count);
    for (uint32_t size : {90 * k_text_block_chars, 98 * k_text_block_chars}) {
        type_text(std::string(size, 'x'));
        host().ok_cancel = {false, false, true};
        host().save_changes = {true};
        if (size < 98 * k_text_block_chars) {
            host().ok_cancel = {true};
        }
        ASSERT_TRUE(run_command([] { store_text_pane(1); }));
        EXPECT_EQ(text_of("home"), std::string(size, 'x'));
        EXPECT_EQ(blocks_free(), k_low_block_count - size / k_text_block_chars - 1);
        EXPECT_TRUE(host().ok_cancel.empty() && host().save_changes.empty());
    }
    block_free(cell_first_aux(index_root()));
    cell_set_first_aux(index_root(), 0);
    set_web_changed(true);
    host().ok_cancel = {true};
    host().save_changes = {true};
    uint16_t before = blocks_free();
    ASSERT_TRUE(run_command([] { store_text_pane(1); }));
    EXPECT_EQ(blocks_free(), before - 1) << "one view state";
    give_back(blocks);
}

TEST_F(Arena, AnOfferWithinAnAllocationLeavesItWhole) {
    std::vector<BlockHandle> blocks = leave_free_blocks(k_low_block_count);
    type_text(std::string(5000, 'y'));  // does not fit
    host().ok_cancel = {true};
    host().save_changes = {true};
    const std::string whole(1440, 'z');
    BlockHandle text = text_from_cstring(whole.c_str());
    EXPECT_EQ(text_string(text), whole);
    chain_free(text);
    EXPECT_EQ(blocks_free(), k_low_block_count);
    give_back(blocks);
}

TEST_F(Arena, RunningOutDuringStartUpEndsTheProgram) {
    std::vector<BlockHandle> blocks = leave_free_blocks(0);
    auto alloc = [] { block_alloc(k_block_plain); };
    take_log();
    EXPECT_EQ(run_until_end(alloc), -1) << "no recovery point was taken";
    recovery_arm(false);
    EXPECT_EQ(run_until_end([] { recover([](void *) { block_alloc(k_block_plain); }); }), -1);
    EXPECT_EQ(take_log(), (Log{"warning OUT OF MEMORY|Quorvane", "end -1",
                               "warning OUT OF MEMORY|Quorvane", "end -1"}));
    give_back(blocks);
}

TEST_F(Arena, RunningOutUnwindsAndGivesBackWhatWasUnderWay) {
    std::vector<BlockHandle> blocks = leave_free_blocks(5);
    EXPECT_EQ(recover([](void *) {
                  chain_park(block_alloc(k_block_text));
                  chain_park(0);
                  text_alloc(5 * k_text_block_chars);
              }),
              -1);
    EXPECT_EQ(blocks_free(), 4) << "only the chain under construction is given back at once";
    block_arena_recover();
    EXPECT_EQ(blocks_free(), 5);
    EXPECT_FALSE(recovery_available());
    give_back(blocks);
}

TEST_F(Arena, RecoveryPointsNest) {
    std::vector<BlockHandle> blocks = leave_free_blocks(0);
    static std::string steps;
    steps.clear();
    auto inner = [](void *) {
        steps += "a";
        block_alloc(k_block_plain);
        steps += "never";
    };
    static auto inner_body = static_cast<void (*)(void *)>(inner);
    EXPECT_EQ(recover([](void *) {
                  steps += recover(inner_body) == -1 ? "b" : "?";
                  steps += recover([](void *) {}) == 0 ? "c" : "?";
                  steps += recovery_available() ? "d" : "?";
                  block_alloc(k_block_plain);
                  steps += "never";
              }),
              -1);
    EXPECT_EQ(steps, "abcd");
    EXPECT_EQ(block_try_alloc(k_block_plain), 0);
    give_back(blocks);
}
