#include "tests/engine/engine_test.h"

#include <algorithm>
#include <iterator>
#include <utility>

static Names ring_names(uint32_t (*entries)(CellHandle *)) {
    CellHandle cells[31];
    const uint32_t count = entries(cells);
    Names names;
    std::transform(cells, cells + count, std::back_inserter(names), name_string);
    return names;
}

void EngineTest::SetUp() {
    start_program();
}

void EngineTest::TearDown() {
    EXPECT_EQ(check_engine(lost_blocks), "");
    EXPECT_EQ(check_cell_list(), "");
}

CellHandle make_cell(const char *name, const std::string &text) {
    CellHandle cell = cell_create(index_root_address(), name);
    cell_replace_text(cell, text.data(), static_cast<uint32_t>(text.size()));
    insert_list_item(cell);
    return cell;
}

Log take_log() {
    return std::exchange(host().log, {});
}

Names cell_names() {
    Names names;
    for (CellHandle cell : live_cells()) {
        names.push_back(name_string(cell));
    }
    return names;
}

Names trail_names() {
    return ring_names(trail_entries);
}

Names forward_names() {
    return ring_names(forward_entries);
}

std::string current_name() {
    return name_string(current_cell());
}

std::string text_of(const char *name) {
    CellHandle cell = cell_lookup(name);
    return cell == 0 ? "no cell " + std::string(name) : text_string(cell_text(cell));
}

void open_scene() {
    make_cell("alpha", "gamma");
    make_cell("bent");
    CellHandle beta = make_cell("beta", "alpha and home, " + std::string(100, 'b'));
    cell_set_script(beta, text_from_cstring("script"));
    cell_set_value(beta, val_from_text(text_from_cstring("12")));
    make_cell("gamma");
    go_to_cell(make_cell("delta", "gone"));
    cell_set_script(current_cell(), text_from_cstring("gone"));
    cell_set_value(current_cell(), val_from_text(text_from_cstring("0")));
    host().ok_cancel = {true};
    delete_cell();
    trail_reset();
    refresh_current_view();
    for (const char *name : {"alpha", "beta", "gamma"}) {
        go_to_name(name);
    }
    back();
    set_web_changed(false);
    host().log.clear();
}

Names visible_state() {
    Names state = {"at " + current_name(), "pane " + host().pane.text,
                   web_changed() ? "changed" : "unchanged"};
    for (CellHandle c : live_cells()) {
        state.push_back("cell " + name_string(c) + ": " + text_string(cell_text(c)) + "|" +
                        text_string(cell_script(c)) + "|" +
                        (cell_value(c) != 0 ? text_string(val_text(cell_value(c))) : ""));
    }
    for (const std::string &name : trail_names()) {
        state.push_back("trail " + name);
    }
    for (const std::string &name : forward_names()) {
        state.push_back("forward " + name);
    }
    return state;
}

std::vector<BlockHandle> leave_free_blocks(uint32_t count) {
    host().quiet = true;
    std::vector<BlockHandle> blocks;
    while (blocks_free() > count) {
        blocks.push_back(block_alloc(k_block_plain));
    }
    return blocks;
}

void give_back(const std::vector<BlockHandle> &blocks) {
    for (BlockHandle h : blocks) {
        block_free(h);
    }
}
