// Lines broken into rows, and the rows of the whole, against a model that breaks every line anew.
#include "pane/characters.h"
#include "pane/document.h"
#include "pane/wrap.h"
#include "tests/pane/random_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr uint32_t k_tab = 40;

uint32_t wide(void *, uint32_t style, uint32_t code) {
    return code < k_bad_byte ? 9 + style : 14;
}

// Each style has one width for all of ASCII.
struct Looks {
    uint16_t ascii[k_measured_styles][0x80];
    Widths widths;
};

Looks *looks() {
    static Looks made;
    for (uint32_t style = 0; style < k_measured_styles; ++style) {
        for (uint16_t &width : made.ascii[style]) {
            width = static_cast<uint16_t>(5 + style);
        }
        made.widths.ascii[style] = made.ascii[style];
    }
    made.widths.other = wide;
    made.widths.tab = k_tab;
    return &made;
}

// A character of a line, where it begins, and whether the line may be broken in front of it.
struct Cell {
    uint32_t at;
    uint32_t x;
    bool good;
};

// The line's characters, and its end.
std::vector<Cell> cells_of(const LineRange &line) {
    std::vector<Cell> cells;
    uint32_t x = 0;
    uint32_t style_before = 0;
    bool blank_before = false;
    for (uint32_t at = line.start; at < line.end;) {
        const char byte = *gap_item(line.text, at);
        const uint32_t style = static_cast<uint8_t>(*gap_item(line.styles, at));
        const bool blank = byte == ' ' || byte == '\t';
        cells.push_back({at, x, style != style_before || (blank_before && !blank)});
        const Character found = character_at(line.text, at);
        x = byte == '\t'        ? (x + 2) / k_tab * k_tab + k_tab
            : found.code < 0x80 ? x + 5 + style
                                : x + wide(nullptr, style, found.code);
        at += found.size;
        style_before = static_cast<uint8_t>(*gap_item(line.styles, at - 1));
        blank_before = blank;
    }
    cells.push_back({line.end, x, false});
    return cells;
}

// The first characters of the rows: each row takes what ends in front of `room`, back to where it
// may be broken, and one character at least.
std::vector<size_t> rows_of(const std::vector<Cell> &cells, uint32_t room) {
    std::vector<size_t> rows = {0};
    for (size_t i = 1; i + 1 < cells.size();) {
        const size_t row = rows.back();
        if (cells[i + 1].x - cells[row].x < room) {
            ++i;
            continue;
        }
        size_t cut = i;
        while (cut > row && !cells[cut].good) {
            --cut;
        }
        rows.push_back(cut > row ? cut : i);
        i = std::max(i, rows.back() + 1);
    }
    return rows;
}

LineRange range_of(const Document *document, uint32_t line) {
    return {&document->text, &document->styles, document_line_start(document, line),
            document_line_end(document, line)};
}

// Returns how many rows.
uint32_t expect_broken(const LineRange &line, uint32_t room, Breaks *breaks) {
    const Widths &widths = looks()->widths;
    const std::vector<Cell> cells = cells_of(line);
    const std::vector<size_t> rows = rows_of(cells, room);
    wrap_line(line, widths, room, breaks);
    EXPECT_EQ(breaks->count, rows.size());
    for (size_t row = 0; row < rows.size() && breaks->count == rows.size(); ++row) {
        const Break part = breaks->parts[row];
        EXPECT_EQ(part.at, cells[rows[row]].at);
        EXPECT_EQ(part.x, cells[rows[row]].x);
        const size_t end = row + 1 < rows.size() ? rows[row + 1] : cells.size();
        for (size_t i = rows[row]; i < end; ++i) {
            EXPECT_EQ(part_of(breaks, cells[i].at), row);
            EXPECT_EQ(x_of(line, widths, part, cells[i].at), cells[i].x);
        }
    }
    return static_cast<uint32_t>(rows.size());
}

// ---- Rows of the whole --------------------------------------------------------------------------

// Lines whose rows are not known any more, as the document's owner takes them from a change.
struct Dirty {
    uint32_t from;
    uint32_t to;
};

void on_changed(void *owner, const Change &change) {
    Dirty *dirty = static_cast<Dirty *>(owner);
    const int32_t added = std::max(change.lines_added, 0);
    *dirty = {change.line, change.line + static_cast<uint32_t>(added)};
}

void on_save_point(void *, bool) {}

void expect_rows(Document *document, uint32_t room, Random *random, Breaks *breaks) {
    uint32_t top = 0;
    for (uint32_t line = 0; line < lines_count(&document->lines); ++line) {
        const uint32_t height = expect_broken(range_of(document, line), room, breaks);
        ASSERT_EQ(visual_height(&document->visual, line), height) << line;
        ASSERT_EQ(visual_top(&document->visual, line), top) << line;
        ASSERT_EQ(visual_find(&document->visual, top), line);
        top += height;
        ASSERT_EQ(visual_find(&document->visual, top - 1), line);
        const uint32_t other = (*random)(lines_count(&document->lines));
        const uint32_t found = visual_find(&document->visual, visual_top(&document->visual, other));
        ASSERT_EQ(found, other);
    }
    ASSERT_EQ(document->visual.total, top);
    ASSERT_EQ(visual_find(&document->visual, top + 5), lines_count(&document->lines) - 1);
}

void change_text(Document *document, Random *random) {
    const uint32_t length = document_length(document);
    const uint32_t at = (*random)(length + 1);
    if (length < 500 && (*random)(5) < 3) {
        const std::string end = (*random)(4) == 0 ? "\n" : "";  // it may make a CR a CR LF
        const std::string bytes = end + random_text(random, 1 + (*random)(8));
        ASSERT_TRUE(
            document_insert(document, at, bytes.data(), static_cast<uint32_t>(bytes.size())));
    } else {
        ASSERT_TRUE(document_remove(document, at, (*random)(std::min(length - at, 30U) + 1)));
    }
}

// The styles of a line's characters; parts of a character have the same one.
void change_styles(Document *document, Random *random, Dirty *dirty) {
    dirty->from = (*random)(lines_count(&document->lines));
    dirty->to = dirty->from;
    const LineRange line = range_of(document, dirty->from);
    for (uint32_t at = line.start; at < line.end;) {
        const uint32_t size = character_at(line.text, at).size;
        const uint8_t style = static_cast<uint8_t>((*random)(6) == 0 ? 1 + (*random)(3) : 0);
        document->styling_at = at;
        uint32_t from = 0;
        uint32_t to = 0;
        document_style_next(document, size, style, &from, &to);
        at += size;
    }
}

TEST(Wrap, RowsFollowTheTextAsItChanges) {
    Random random = {};
    Breaks breaks = {};
    for (uint32_t room : {1U, 20U, 61U, 200U}) {
        Document document;
        Dirty dirty = {0, 0};
        ASSERT_TRUE(document_init(&document, {&dirty, on_changed, on_save_point}));
        for (uint32_t i = 0; i < 700; ++i) {
            random(5) == 0 ? change_styles(&document, &random, &dirty)
                           : change_text(&document, &random);
            for (uint32_t line = dirty.from; line <= dirty.to; ++line) {
                wrap_line(range_of(&document, line), looks()->widths, room, &breaks);
                visual_set_height(&document.visual, line, breaks.count);
            }
            expect_rows(&document, room, &random, &breaks);
            ASSERT_FALSE(testing::Test::HasFailure()) << "room " << room << ", change " << i;
        }
        document_free(&document);
    }
    breaks_free(&breaks);
}

}  // namespace
