// The rings' limits; what goes into them is the model test's.
#include "tests/engine/engine_test.h"

#include "web/cells.h"
#include "web/trail.h"

using Trail = EngineTest;

TEST_F(Trail, BothRingsKeep31EntriesAndTheOddRepetition) {
    Names expected;
    for (int i = 0; i < 31; ++i) {
        expected.push_back("c" + std::to_string(i));
        CellHandle cell = make_cell(expected.back().c_str());
        for (auto *push : {trail_push, forward_push, trail_push, forward_push}) {
            push(cell);  // the last one counts twice: the rings are full
        }
    }
    expected.erase(expected.begin());
    expected.push_back("c30");
    EXPECT_EQ(trail_names(), expected);
    EXPECT_EQ(forward_names(), expected);
    while (forward_pop() != 0) {
    }
    forward_push(cell_lookup("c0"));
    EXPECT_EQ(forward_names(), Names{"c0"}) << "which the emptied ring still has in its slots";
}
