#include "web/cells.h"

#include "core/check.h"
#include "core/names.h"
#include "core/text.h"
#include "web/cell_numbers.h"
#include "web/index.h"
#include "web/link_list.h"
#include "web/options.h"
#include "web/steps.h"
#include "web/trail.h"
#include "web/value.h"

#include <cstring>

static struct Cells {
    char name[k_cellname_max + 1];  // the result of cell_name_string()
} cells;

namespace {

void release_cell(CellHandle cell) {
    chain_free(cell_text(cell));
    link_list_free(cell_second_links(cell));
    cell_set_second_links(cell, 0);
    block_free(cell_view_state(cell));
    cell_set_text(cell, 0);
    cell_set_view_state(cell, 0);
    // A list of out pointers is the report's that built it, which drops it itself (links_drop()):
    // the field is cleared first, so that nothing of one is given back here.
    cell_set_out_pointers(cell, 0);
    chain_free(cell_script(cell));
    link_list_free(cell_out_pointers(cell));
    block_free(cell_spare_block(cell));
    cell_set_spare_block(cell, 0);
    cell_set_script(cell, 0);
    cell_set_numbered(cell, false);
    val_free(cell_value(cell));  // the field keeps its handle; reviving the cell clears it
}

// A cell that was deleted may hold stale handles in these.
void clear_fields(CellHandle cell) {
    cell_set_list_item(cell, 0);
    cell_set_text(cell, 0);
    cell_set_view_state(cell, 0);
    cell_set_spare_block(cell, 0);
    cell_set_out_pointers(cell, 0);
    cell_set_script(cell, 0);
    cell_set_second_links(cell, 0);
    cell_set_value(cell, 0);
    cell_set_numbered(cell, false);
}

// Releases every node but `kept` (the root, or 0), which is left outside the tree.
void release_web(CellHandle kept) {
    index_walk(index_root(), cell_release_fields);
    if (kept != 0) {
        index_walk(node_left(kept), node_free);
        index_walk(node_right(kept), node_free);
    } else {
        index_walk(index_root(), node_free);
    }
    *index_root_address() = 0;
    trail_reset();
}

}  // namespace

CellHandle cell_lookup(const char *name) {
    const CellHandle node = index_find(index_root(), name);
    return is_live_cell(node) ? node : 0;
}

CellHandle cell_create(CellHandle *root, const char *name) {
    const CellHandle cell = index_find_or_insert(name, root, k_cell_live);
    if (cell == 0) {
        return 0;
    }
    clear_fields(cell);
    cell_numbers_rebuild();
    return cell;
}

void cell_delete(CellHandle cell) {
    if (cell == 0) {
        return;
    }
    CHECK(is_live_cell(cell));
    trail_forget(cell);
    forward_forget(cell);
    if (cell == current_cell()) {
        step_off_current_cell();
    }
    cell_release_fields(cell);
    cell_set_kind(cell, k_cell_deleted);
    cell_numbers_rebuild();
}

void cell_release_fields(CellHandle node) {
    switch (cell_kind(node)) {
    case k_cell_live:
        release_cell(node);
        break;
    case k_cell_value_entry:
        val_free(cell_text(node));
        break;
    default:
        break;
    }
}

const char *cell_name_string(CellHandle cell) {
    if (cell == 0) {
        return "BAD_CELL_HANDLE";
    }
    if (cell_kind(cell) == k_cell_live) {
        text_copy_out(cells.name, cell_name(cell), k_cellname_max);
    }
    return cells.name;
}

void web_clear() {
    release_web(0);
}

// The home cell's own blocks serve again, so that a new web can be made however full the arena is.
void web_reset(const char *cellname) {
    CellHandle home = index_root() != 0 && text_equals_cstring(cell_name(index_root()), cellname)
                          ? index_root()
                          : 0;
    release_web(home);
    current_cell_reset(0);
    if (home != 0) {
        clear_fields(home);
        index_link(home, index_root_address());
        cell_numbers_rebuild();
    } else {
        home = cell_create(index_root_address(), cellname);
    }
    current_cell_reset(home);
    option_defaults();
}
