// The trail and the forward ring.
#include "tests/engine/engine_test.h"

#include "web/cells.h"
#include "web/trail.h"

using Trail = EngineTest;

static CellHandle handle(const std::string &name) {
    CellHandle cell = cell_lookup(name.c_str());
    return cell != 0 ? cell : make_cell(name.c_str());
}

TEST_F(Trail, BothRingsKeep31EntriesAndTheOddRepetition) {
    struct Ring {
        void (*push)(CellHandle);
        void (*forget)(CellHandle);
        Names (*names)();
    };
    for (Ring ring : {Ring{trail_push, trail_forget, trail_names},
                      Ring{forward_push, forward_forget, forward_names}}) {
        Names expected;
        for (int i = 0; i < 31; ++i) {
            CellHandle cell = handle("c" + std::to_string(i));
            ring.push(cell);
            ring.push(cell);  // full from the last one on: counts again
            expected.push_back(name_string(cell));
        }
        expected.erase(expected.begin());
        expected.push_back("c30");
        EXPECT_EQ(ring.names(), expected);
        for (const char *forgotten : {"c30", "c1"}) {
            ring.forget(handle(forgotten));
            std::erase(expected, forgotten);
            EXPECT_EQ(ring.names(), expected);
        }
    }
}
