// What is in the web, for the tests of the engine and of the window.
#pragma once

#include "core/text.h"
#include "web/cells.h"
#include "web/trail.h"

#include <string>
#include <vector>

// The whole text, every byte of it; a cell's name.
inline std::string text_string(BlockHandle text) {
    std::string s(text_size(text) + 1, 0);
    s.resize(text_copy_out(s.data(), text, text_size(text)));
    return s;
}

inline std::string name_string(CellHandle cell) {
    return cell == 0 ? "-" : text_string(cell_name(cell));
}

inline std::string current_name() {
    return name_string(current_cell());
}

// The text of the live cell of that name.
inline std::string stored_text(const std::string &name) {
    const CellHandle cell = cell_lookup(name.c_str());
    return cell == 0 ? "no cell " + name : text_string(cell_text(cell));
}

// The live cells in index order.
inline std::vector<CellHandle> live_cells() {
    std::vector<CellHandle> cells;
    for (CellHandle c = first_live_cell(); c != 0; c = next_live_cell(c)) {
        cells.push_back(c);
    }
    return cells;
}

// Takes blocks until so many are free.
inline std::vector<BlockHandle> leave_free_blocks(uint32_t count) {
    std::vector<BlockHandle> blocks;
    while (blocks_free() > count) {
        blocks.push_back(block_alloc(k_block_plain));
    }
    return blocks;
}
