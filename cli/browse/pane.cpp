#include "cli/browse/pane.h"

#include "cli/browse/glyphs.h"
#include "cli/link_words.h"
#include "core/names.h"
#include "web/cells.h"

#include <algorithm>

namespace {

// ---- Rows ---------------------------------------------------------------------------------------

bool is_blank(char ch) {
    return ch == ' ' || ch == '\t';
}

struct Fit {
    size_t end;   // behind the last byte that fits
    size_t word;  // behind the last blank among them; the beginning for none
};

// How much of a line fits into a row, one glyph at least.
Fit fit_row(std::string_view line, size_t begin, int width) {
    Fit fit = {begin, begin};
    for (int column = 0; fit.end < line.size();) {
        const Glyph glyph = glyph_at(line, fit.end, column);
        if (column + glyph.width > width && fit.end > begin) {
            break;
        }
        fit.end += glyph.size;
        column += glyph.width;
        if (is_blank(line[fit.end - 1])) {
            fit.word = fit.end;
        }
    }
    return fit;
}

// Blanks where a row ends go with it.
size_t end_of_row(std::string_view line, size_t begin, int width) {
    const Fit fit = fit_row(line, begin, width);
    if (fit.end == line.size()) {
        return fit.end;
    }
    if (is_blank(line[fit.end])) {
        const size_t next = line.find_first_not_of(" \t", fit.end);
        return next == std::string_view::npos ? line.size() : next;
    }
    return fit.word > begin ? fit.word : fit.end;
}

void add_rows(Pane *pane, size_t begin, size_t end) {
    const std::string_view line = std::string_view(pane->text).substr(0, end);
    do {
        const size_t next = end_of_row(line, begin, pane->width);
        pane->rows.push_back({begin, next});
        begin = next;
    } while (begin < end);
}

void break_rows(Pane *pane) {
    pane->rows.clear();
    const std::string &text = pane->text;
    for (size_t begin = 0; begin <= text.size();) {
        const size_t end = std::min(text.find('\n', begin), text.size());
        const bool crlf = end < text.size() && end > begin && text[end - 1] == '\r';
        if (begin < text.size() || begin == 0) {
            add_rows(pane, begin, end - (crlf ? 1 : 0));
        }
        begin = end + 1;
    }
}

// The last row stays at the bottom or above.
void keep_in_text(Pane *pane) {
    const size_t shown = static_cast<size_t>(pane->height);
    const size_t last = pane->rows.size() > shown ? pane->rows.size() - shown : 0;
    pane->top = std::min(pane->top, last);
}

// ---- Links --------------------------------------------------------------------------------------

CellHandle cell_named(std::string_view word) {
    if (word.empty() || word.size() > k_cellname_max || !is_letter(word[0])) {
        return 0;
    }
    return cell_lookup(std::string(word).c_str());
}

// A link for the text in between, if it names a cell.
bool add_link(Pane *pane, ByteRange at) {
    const CellHandle cell =
        cell_named(std::string_view(pane->text).substr(at.begin, at.end - at.begin));
    if (cell != 0) {
        pane->links.push_back({at, cell});
    }
    return cell != 0;
}

void add_word_links(Pane *pane, ByteRange part) {
    const std::string_view text = std::string_view(pane->text).substr(0, part.end);
    size_t at = part.begin;
    for (std::string_view word; !(word = next_link_word(text, &at)).empty();) {
        add_link(pane, {at - word.size(), at});
    }
}

// What a report puts before a name.
size_t behind_marks(const std::string &text, ByteRange line) {
    return std::min(text.find_first_not_of(" <>", line.begin), line.end);
}

void add_line_links(Pane *pane) {
    const std::string &text = pane->text;
    for (size_t begin = 0; begin < text.size();) {
        const size_t end = std::min(text.find('\n', begin), text.size());
        const ByteRange name = {behind_marks(text, {begin, end}), end};
        if (!add_link(pane, name)) {
            add_word_links(pane, {begin, end});
        }
        begin = end + 1;
    }
}

bool is_on_screen(const Pane &pane, const PaneLink &link) {
    const size_t row = pane_row_of(pane, link.at.begin);
    return row >= pane.top && row < pane.top + static_cast<size_t>(pane.height);
}

// Where to begin when nothing is selected: what the user sees comes first.
size_t first_choice(const Pane &pane, bool forward) {
    const size_t count = pane.links.size();
    for (size_t i = 0; i < count; ++i) {
        const size_t link = forward ? i : count - 1 - i;
        if (is_on_screen(pane, pane.links[link])) {
            return link;
        }
    }
    return forward ? 0 : count - 1;
}

}  // namespace

void pane_set_text(Pane *pane, std::string text) {
    pane->text = std::move(text);
    pane->links.clear();
    pane->top = 0;
    pane->selected = k_no_link;
    pane->match = {0, 0};
    break_rows(pane);
}

void pane_find_links(Pane *pane, bool lines) {
    const ByteRange selected =
        pane_selected(*pane) != nullptr ? pane_selected(*pane)->at : ByteRange{0, 0};
    pane->links.clear();
    pane->selected = k_no_link;
    if (lines) {
        add_line_links(pane);
    } else {
        add_word_links(pane, {0, pane->text.size()});
    }
    if (selected.end > 0) {
        pane_select_link_at(pane, selected.begin);
    }
}

void pane_resize(Pane *pane, int width, int height) {
    const bool breaks = width != pane->width || pane->rows.empty();
    pane->width = std::max(width, 1);
    pane->height = std::max(height, 1);
    if (breaks) {
        const size_t first = pane->rows.empty() ? 0 : pane->rows[pane->top].begin;
        break_rows(pane);
        pane->top = pane_row_of(*pane, first);
    }
    keep_in_text(pane);
}

void pane_scroll(Pane *pane, long rows) {
    const long top = static_cast<long>(pane->top) + rows;
    pane->top = static_cast<size_t>(std::max(top, 0L));
    keep_in_text(pane);
}

void pane_reveal(Pane *pane, size_t at) {
    const size_t row = pane_row_of(*pane, at);
    const size_t shown = static_cast<size_t>(pane->height);
    if (row < pane->top) {
        pane->top = row;
    } else if (row >= pane->top + shown) {
        pane->top = row - shown + 1;
    }
    keep_in_text(pane);
}

void pane_step_link(Pane *pane, bool forward) {
    const size_t count = pane->links.size();
    if (count == 0) {
        return;
    }
    if (pane->selected == k_no_link) {
        pane->selected = first_choice(*pane, forward);
    } else {
        pane->selected = (pane->selected + (forward ? 1 : count - 1)) % count;
    }
    pane_reveal(pane, pane->links[pane->selected].at.begin);
}

const PaneLink *pane_selected(const Pane &pane) {
    return pane.selected < pane.links.size() ? &pane.links[pane.selected] : nullptr;
}

bool pane_select_link_at(Pane *pane, size_t at) {
    const auto covers = [at](const PaneLink &link) {
        return link.at.begin <= at && at < link.at.end;
    };
    const auto found = std::find_if(pane->links.begin(), pane->links.end(), covers);
    if (found != pane->links.end()) {
        pane->selected = static_cast<size_t>(found - pane->links.begin());
    }
    return found != pane->links.end();
}

size_t pane_byte_at(const Pane &pane, int row, int column) {
    const size_t number = pane.top + static_cast<size_t>(row);
    if (row < 0 || number >= pane.rows.size()) {
        return pane.text.size();
    }
    const ByteRange span = pane.rows[number];
    const std::string_view line = std::string_view(pane.text).substr(0, span.end);
    int before = 0;
    for (size_t at = span.begin; at < span.end;) {
        const Glyph glyph = glyph_at(line, at, before);
        before += glyph.width;
        if (column < before) {
            return at;
        }
        at += glyph.size;
    }
    return pane.text.size();
}

size_t pane_row_of(const Pane &pane, size_t at) {
    const auto behind =
        std::upper_bound(pane.rows.begin(), pane.rows.end(), at,
                         [](size_t byte, const ByteRange &row) { return byte < row.begin; });
    return behind == pane.rows.begin() ? 0 : static_cast<size_t>(behind - pane.rows.begin()) - 1;
}
