#include "core/busy.h"

#include "core/errors.h"

static struct Busy { bool busy; } state;

void busy_set(bool busy) {
    state.busy = busy;
}

bool is_busy() {
    return state.busy;
}

bool refused_while_busy() {
    if (state.busy) {
        report_error(k_output_in_use);
    }
    return state.busy;
}
