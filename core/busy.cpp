#include "core/busy.h"

#include "core/block_arena.h"
#include "core/check.h"
#include "core/errors.h"

static struct Busy { bool busy; } state;

void busy_set(bool busy) {
    CHECK(state.busy != busy);
    state.busy = busy;
}

bool is_busy() {
    return state.busy;
}

// The question that offers to save and exit stands in the middle of an allocation, and is all that
// the user needs to be told.
bool refused_while_busy() {
    if (state.busy) {
        report_error(k_output_in_use);
    }
    return state.busy || short_on_memory_offer_open();
}
