// Links: which cells a text names. Their lists (web/link_list.h) are built for a report and dropped
// when it ends.
#pragma once

#include "core/block_arena.h"

constexpr uint32_t k_scanned_text_max = 4095;  // characters of a text that links and reports see

// A list of the cells that the text names, or 0 for an empty text.
BlockHandle links_scan_text(BlockHandle text, CellHandle owner);

// A node that is no live cell is left alone.
void links_build(CellHandle cell);
void links_drop(CellHandle cell);
void links_build_all();
void links_drop_all();
void links_build_selection();
void links_drop_selection();

// Gives back the list being built and every list that was built. Part of recovery.
void links_recover();
