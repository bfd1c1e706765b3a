#include "cli/browse/find.h"

#include "cli/browse/screen.h"
#include "cli/browse/view.h"
#include "cli/shown.h"
#include "web/cell_ops.h"
#include "web/index.h"
#include "web/trail.h"

#include <algorithm>

static struct BrowseFind {
    CellHandle cell = 0;  // where it was found
} found;

namespace {

constexpr size_t k_nowhere = std::string::npos;

char lower(char ch) {
    return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch + 32) : ch;
}

size_t position_of(const std::string &wanted, const std::string &text, size_t from) {
    if (from > text.size()) {
        return k_nowhere;
    }
    const auto at = std::search(text.begin() + static_cast<long>(from), text.end(), wanted.begin(),
                                wanted.end(), [](char a, char b) { return lower(a) == lower(b); });
    return at == text.end() ? k_nowhere : static_cast<size_t>(at - text.begin());
}

CellHandle cell_behind(CellHandle cell) {
    const CellHandle next = next_live_cell(cell);
    return next != 0 ? next : first_live_cell();
}

size_t start_in_text() {
    const Pane &pane = *screen_text();
    return pane.match.end > 0 ? pane.match.begin + 1 : pane.rows[pane.top].begin;
}

void go_there() {
    go_to_cell(found.cell);
}

void show_match(size_t at, size_t size) {
    screen_set_focus(Part::text);
    screen_text()->match = {at, at + size};
    screen_text()->selected = k_no_link;
    screen_reveal(at);
}

bool show_in(CellHandle cell, size_t at, size_t size) {
    found.cell = cell;
    if (cell != current_cell() && !view_run(go_there)) {
        return false;
    }
    show_match(at, size);
    return true;
}

}  // namespace

bool find_next(const std::string &wanted) {
    const CellHandle start = current_cell();
    CellHandle cell = start;
    size_t at = position_of(wanted, screen_text()->text, start_in_text());
    while (at == k_nowhere) {
        cell = cell_behind(cell);
        at = position_of(wanted, text_bytes(cell_text(cell)), 0);
        if (cell == start) {
            break;
        }
    }
    screen_text()->match = {0, 0};
    return at != k_nowhere && show_in(cell, at, wanted.size());
}
