#include "web/cell_ops.h"

#include "core/busy.h"
#include "core/check.h"
#include "core/host_messages.h"
#include "core/host_view.h"
#include "core/names.h"
#include "core/strings.h"
#include "core/text.h"
#include "web/cells.h"
#include "web/changed.h"
#include "web/index.h"
#include "web/options.h"
#include "web/steps.h"
#include "web/trail.h"
#include "web/value.h"

#include <cstring>

// What a clone's copy of a view state takes over; the record lies within.
constexpr uint32_t k_cloned_state_at = k_block_payload_at + 8;
constexpr uint32_t k_cloned_state_bytes = 16;

static struct CellOps {
    char name[k_cellname_max + 1];  // the name that an operation works with
    BlockHandle cloned_value;       // hung into no cell yet; recovery gives it back
} ops;

namespace {

// Leaves the name to work with in ops.name: the one given, or the user's answer. False when there
// is none, the user having been told why.
bool take_name(const char *name) {
    if (name == nullptr || *name == 0) {
        return ask_cellname(ops.name) && ops.name[0] != 0;
    }
    // Only the part from the first letter on counts, and only 48 characters of it.
    copy_string(ops.name, cellname_start(name), k_cellname_max);
    if (!cellname_valid(ops.name)) {
        show_warning("Bad cell name supplied", k_product_name);
        return false;
    }
    return true;
}

// Every step away from a cell begins here: if the pane's text does not fit, nothing has changed.
void store_if_current() {
    if (current_cell() != 0) {
        store_current_text();
    }
}

// Makes a cell current as the next step of a way that the user takes by name.
void follow_by_name(CellHandle cell) {
    forward_clear();
    trail_push(current_cell());
    set_current_unstored(cell);
}

void show_existing(CellHandle cell) {
    store_if_current();
    follow_by_name(cell);
    cell_list_select_current();
}

// Showing a cell takes a block, and so may offer to save and exit: when that came to nothing, the
// list has been filled anew and has the cell, which came without an item.
void show_created(CellHandle cell) {
    follow_by_name(cell);
    if (cell_list_item(cell) == 0) {
        cell_list_add(cell);
    } else {
        cell_list_select_current();
    }
}

CellHandle create_named() {
    store_if_current();
    return cell_create(index_root_address(), ops.name);
}

// A copy of a block of view state, or 0 for none.
BlockHandle copy_state_block(BlockHandle source) {
    if (source == 0) {
        return 0;
    }
    const BlockHandle copy = block_alloc(k_block_plain);
    memcpy(block_ptr(copy) + k_cloned_state_at, block_ptr(source) + k_cloned_state_at,
           k_cloned_state_bytes);
    return copy;
}

BlockHandle parked(BlockHandle head) {
    chain_park(head);
    return head;
}

// Makes every part first and the cell last, so that a clone is whole or not there. The copies of
// the blocks of view state are hung in nowhere, because a clone starts without view state: they
// only make it cost the blocks that its source has, and are back when the arena is emptied.
CellHandle make_clone(CellHandle source) {
    CHECK(is_live_cell(source));
    store_if_current();
    const BlockHandle text = parked(text_duplicate(cell_text(source)));
    const BlockHandle list = parked(text_duplicate(cell_out_pointers(source)));
    const BlockHandle script = parked(text_duplicate(cell_script(source)));
    ops.cloned_value = val_copy(cell_value(source));
    parked(copy_state_block(cell_view_state(source)));
    parked(copy_state_block(cell_spare_block(source)));
    const CellHandle clone = cell_create(index_root_address(), ops.name);
    for (int i = 0; i < 5; ++i) {
        chain_unpark();
    }
    cell_set_text(clone, text);
    cell_set_out_pointers(clone, list);
    cell_set_script(clone, script);
    cell_set_value(clone, ops.cloned_value);
    ops.cloned_value = 0;
    return clone;
}

void begin_step() {
    if (current_cell() != 0) {
        store_current_text();
        list_position_set(current_cell());
        current_cell_reset(0);
    }
}

// The newest trail entry of that name, as the views show it; or 0.
CellHandle find_trail_entry(const char *name) {
    trail_walk_start();
    CellHandle entry = trail_walk_next();
    while (entry != 0 && strcmp(cell_name_string(entry), name) != 0) {
        entry = trail_walk_next();
    }
    return entry;
}

bool is_on_trail(CellHandle cell) {
    trail_walk_start();
    CellHandle entry = trail_walk_next();
    while (entry != 0 && entry != cell) {
        entry = trail_walk_next();
    }
    return entry != 0;
}

void set_current_unstored_and_select(CellHandle cell) {
    set_current_unstored(cell);
    cell_list_select_current();
}

}  // namespace

CellHandle go_to_cell(CellHandle cell) {
    if (!is_live_cell(cell) || cell == current_cell() || refused_while_busy()) {
        return current_cell();
    }
    store_if_current();
    trail_push(current_cell());
    set_current_unstored_and_select(cell);
    return cell;
}

void go_to_link(CellHandle cell) {
    if (is_live_cell(cell) && cell != current_cell() && !refused_while_busy()) {
        show_existing(cell);
    }
}

void go_to_name(const char *name) {
    if (refused_while_busy() || !take_name(name)) {
        return;
    }
    CellHandle cell = cell_lookup(ops.name);
    if (cell != 0) {
        show_existing(cell);
        return;
    }
    if (option_dclick_ask() != 0 && !ask_yes_no("No such cell. Create it?", ops.name)) {
        return;
    }
    cell = create_named();
    if (cell != 0) {
        show_created(cell);
    }
}

CellHandle new_cell(const char *name) {
    if (refused_while_busy() || !take_name(name)) {
        return 0;
    }
    CellHandle cell = cell_lookup(ops.name);
    if (cell == 0) {
        cell = create_named();
        if (cell != 0) {
            show_created(cell);
            set_web_changed(true);
        }
        return cell;
    }
    if (!ask_yes_no("Cell already exists, go there?", ops.name)) {
        return 0;
    }
    show_existing(cell);
    return cell;
}

CellHandle clone_cell(const char *name) {
    if (refused_while_busy() || !take_name(name)) {
        return 0;
    }
    if (cell_lookup(ops.name) != 0) {
        show_warning("Duplicate cell name supplied", k_product_name);
        return 0;
    }
    const CellHandle clone = make_clone(current_cell());
    show_created(clone);
    set_web_changed(true);
    return clone;
}

void delete_cell() {
    const CellHandle cell = current_cell();
    if (cell == 0 || refused_while_busy()) {
        return;
    }
    if (cell == index_root()) {
        show_status_message("Can't Delete Home");
        return;
    }
    if (!ask_ok_cancel("Delete current cell?", k_product_name)) {
        return;
    }
    cell_delete(cell);
    cell_list_remove_item(cell_list_item(cell));  // read now: see show_created()
    set_web_changed(true);
}

void previous_cell() {
    if (!refused_while_busy()) {
        begin_step();
        step_to_previous();
    }
}

void next_cell() {
    if (!refused_while_busy()) {
        begin_step();
        step_to_next();
    }
}

void first_cell() {
    if (!refused_while_busy()) {
        step_to_first();
    }
}

void last_cell() {
    if (!refused_while_busy()) {
        step_to_last();
    }
}

void go_home() {
    if (!refused_while_busy()) {
        set_current_and_select(index_root());
    }
}

// With no entry to go back to, the cell left still goes on the forward ring, so that forward()
// returns to it.
void back() {
    if (refused_while_busy()) {
        return;
    }
    store_if_current();
    CellHandle cell = trail_pop();
    if (cell == 0) {
        cell = index_root();
        if (current_cell() != 0 && current_cell() != cell) {
            forward_push(current_cell());
        }
    }
    set_current_unstored_and_select(cell);
}

void forward() {
    if (refused_while_busy()) {
        return;
    }
    store_if_current();
    const CellHandle cell = forward_pop();
    if (cell != 0) {
        go_to_cell(cell);
    }
}

void jump_to_trail_entry(const char *name) {
    const CellHandle entry = find_trail_entry(name);
    jump_to_trail_cell(entry == 0 && strcmp(name, "home") == 0 ? index_root() : entry);
}

void jump_to_trail_cell(CellHandle cell) {
    if (refused_while_busy() || cell == 0 || (cell != index_root() && !is_on_trail(cell))) {
        return;
    }
    store_if_current();
    for (CellHandle popped = trail_pop(); popped != 0 && popped != cell;) {
        popped = trail_pop();
    }
    set_current_unstored_and_select(cell);
}

void cell_ops_recover() {
    val_free(ops.cloned_value);
    ops.cloned_value = 0;
}
