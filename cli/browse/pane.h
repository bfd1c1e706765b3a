// A text as it stands on the screen: broken into rows, with its links, and where the user is in it.
#pragma once

#include "core/block_arena.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Bytes of a text.
struct ByteRange {
    size_t begin;
    size_t end;
};

struct PaneLink {
    ByteRange at;
    CellHandle cell;
};

constexpr size_t k_no_link = static_cast<size_t>(-1);

struct Pane {
    std::string text;
    std::vector<ByteRange> rows;  // at least one
    std::vector<PaneLink> links;
    int width = 1;   // columns
    int height = 1;  // rows that are shown
    size_t top = 0;  // row
    size_t selected = k_no_link;
    ByteRange match = {0, 0};  // what a search has found
};

// Shows another text from its beginning, without links.
void pane_set_text(Pane *pane, std::string text);

// The words that name cells. In a list of names (`lines`), a line's whole name comes first: it may
// hold what words do not.
void pane_find_links(Pane *pane, bool lines);

// Breaks the text anew where the width is another one; the first byte shown stays on the screen.
void pane_resize(Pane *pane, int width, int height);

void pane_scroll(Pane *pane, long rows);

// Scrolls as little as it takes to show this byte.
void pane_reveal(Pane *pane, size_t at);

// To the next link, or the one before; round at the ends. Without a selected link, to the first or
// last that is on the screen, if any is.
void pane_step_link(Pane *pane, bool forward);

// What is selected, or null.
const PaneLink *pane_selected(const Pane &pane);

// Selects the link that covers this byte. False without one.
bool pane_select_link_at(Pane *pane, size_t at);

// The byte shown at a row and column of the screen part, or the text's size for none.
size_t pane_byte_at(const Pane &pane, int row, int column);

// The row that a byte is in.
size_t pane_row_of(const Pane &pane, size_t at);
