#include "web/cell_text.h"

#include "core/check.h"
#include "core/text.h"
#include "web/links.h"
#include "web/record.h"

namespace {

// The record lies within the 16 bytes that cloning a cell looks at.
constexpr uint32_t k_first_line_at = k_block_payload_at + 8;
constexpr uint32_t k_selection_start_at = k_block_payload_at + 12;
constexpr uint32_t k_selection_end_at = k_block_payload_at + 16;

// Taking a block may offer to save and exit, which stores the pane and so may come here again: the
// field counts as it is afterwards.
BlockHandle view_block(CellHandle cell) {
    CHECK(is_live_cell(cell));
    if (cell_view_state(cell) == 0) {
        const BlockHandle block = block_try_alloc(k_block_plain);
        if (cell_view_state(cell) == 0) {
            cell_set_view_state(cell, block);
        } else {
            block_free(block);
        }
    }
    return cell_view_state(cell);
}

// Gives the cell a text to grow; see view_block() for the second look.
void ensure_text(CellHandle cell) {
    if (cell_text(cell) == 0) {
        const BlockHandle text = text_alloc(0);
        if (cell_text(cell) == 0) {
            cell_set_text(cell, text);
        } else {
            chain_free(text);
        }
    }
}

}  // namespace

// The room is made inside the cell's own text, which stays the old one until all of it is there.
void cell_replace_text(CellHandle cell, const char *bytes, uint32_t n) {
    CHECK(is_live_cell(cell));
    if (!cell_text_fits(cell, n)) {
        run_out_of_blocks();
    }
    if (n == 0) {
        chain_free(cell_text(cell));
        cell_set_text(cell, 0);
    } else {
        ensure_text(cell);
        text_grow(cell_text(cell), n);
        text_assign(cell_text(cell), bytes, n);
    }
    links_drop(cell);
}

bool cell_text_fits(CellHandle cell, uint32_t n) {
    return n == 0 || text_missing_blocks(cell_text(cell), n) <= blocks_free();
}

void cell_store_view(CellHandle cell, const ViewState *view) {
    const BlockHandle block = view_block(cell);
    if (block != 0) {
        block_set32(block, k_first_line_at, static_cast<uint32_t>(view->first_line));
        block_set32(block, k_selection_start_at, static_cast<uint32_t>(view->selection_start));
        block_set32(block, k_selection_end_at, static_cast<uint32_t>(view->selection_end));
    }
}

ViewState cell_view(CellHandle cell) {
    ViewState view = {0, 0, 0};
    const BlockHandle block = view_block(cell);
    if (block != 0) {
        view.first_line = static_cast<int32_t>(block_get32(block, k_first_line_at));
        view.selection_start = static_cast<int32_t>(block_get32(block, k_selection_start_at));
        view.selection_end = static_cast<int32_t>(block_get32(block, k_selection_end_at));
    }
    return view;
}
