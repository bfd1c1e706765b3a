#include "web/steps.h"

#include "web/index.h"
#include "web/trail.h"

namespace {

// The live cell before (after) the list position, wrapping at the end of the index.
CellHandle step(CellHandle (*neighbour)(CellHandle), CellHandle wrapped) {
    CellHandle node = neighbour(list_position());
    while (node != 0 && !is_live_cell(node)) {
        list_position_set(node);
        node = neighbour(node);
    }
    return node != 0 ? node : wrapped;
}

void select_if_any(CellHandle cell) {
    if (cell != 0) {
        set_current_and_select(cell);
    }
}

}  // namespace

void step_to_previous() {
    select_if_any(step(index_prev, last_live_cell()));
}

void step_to_next() {
    select_if_any(step(index_next, first_live_cell()));
}

void step_to_first() {
    select_if_any(first_live_cell());
}

void step_to_last() {
    select_if_any(last_live_cell());
}

void step_off_current_cell() {
    list_position_set(current_cell());
    current_cell_reset(0);
    step_to_previous();
}
