// The trail and the forward ring.
#include "tests/engine/engine_test.h"

#include "web/cells.h"
#include "web/trail.h"

using Trail = EngineTest;

namespace {

constexpr int k_entries = 31;

std::string cell_of(int i) {
    return "c" + std::to_string(i);
}

CellHandle handle(const std::string &name) {
    CellHandle cell = cell_lookup(name.c_str());
    return cell != 0 ? cell : make_cell(name.c_str());
}

struct Ring {
    void (*push)(CellHandle);
    void (*forget)(CellHandle);
    Names (*names)();
};

}  // namespace

TEST_F(Trail, BothRingsKeep31EntriesAndTheOddRepetition) {
    for (Ring ring : {Ring{trail_push, trail_forget, trail_names},
                      Ring{forward_push, forward_forget, forward_names}}) {
        Names expected;
        for (int i = 0; i < k_entries; ++i) {
            ring.push(handle(cell_of(i)));
            ring.push(handle(cell_of(i)));  // full from the last one on: counts again
            expected.push_back(cell_of(i));
        }
        expected.erase(expected.begin());
        expected.push_back(cell_of(30));
        EXPECT_EQ(ring.names(), expected);
        ring.push(handle("home"));
        expected.erase(expected.begin());
        expected.push_back("home");
        EXPECT_EQ(ring.names(), expected);
        ring.forget(handle(cell_of(30)));
        expected.erase(expected.end() - 3, expected.end() - 1);
        EXPECT_EQ(ring.names(), expected);
        ring.forget(handle(cell_of(2)));
        expected.erase(expected.begin());
        EXPECT_EQ(ring.names(), expected);
    }
}

TEST_F(Trail, ForgettingTakesEveryOccurrence) {
    for (const char *name : {"a", "home", "a", "b", "a"}) {
        trail_push(handle(name));
    }
    trail_forget(handle("a"));
    EXPECT_EQ(trail_names(), (Names{"home", "b"}));
    trail_forget(handle("b"));
    trail_forget(handle("home"));
    EXPECT_EQ(trail_names(), Names());
    EXPECT_EQ(trail_pop(), 0);
    EXPECT_EQ(forward_names(), Names()) << "an empty trail pushes nothing forward";
}

TEST_F(Trail, PoppingKeepsTheCellLeftForForward) {
    trail_push(handle("a"));
    trail_push(handle("b"));
    trail_walk_start();
    for (CellHandle expected : {handle("b"), handle("a"), CellHandle{0}, CellHandle{0}}) {
        EXPECT_EQ(trail_walk_next(), expected);
    }
    EXPECT_EQ(trail_pop(), handle("b"));
    EXPECT_EQ(forward_names(), Names{"home"});
    EXPECT_EQ(forward_pop(), handle("home"));
    EXPECT_EQ(forward_pop(), 0);
    list_position_set(handle("a"));
    take_log();
    trail_reset();
    EXPECT_EQ(take_log(), (Log{"list_clear", "list_fill"}));
    EXPECT_EQ(trail_names(), Names());
    EXPECT_EQ(list_position(), 0);
}
