#include "cli/browse/screen.h"

#include "cli/browse/glyphs.h"
#include "cli/browse/list.h"
#include "cli/shown.h"
#include "file/document.h"
#include "web/changed.h"
#include "web/record.h"
#include "web/trail.h"

#include <algorithm>

// A rectangle of the screen.
struct Box {
    int row;
    int column;
    int rows;
    int columns;
};

static struct Screen {
    Pane text;
    Pane console;
    Pane bottom;
    Part focus = Part::text;
    bool console_open = false;
    std::string message;
    std::string question;
    Box text_box = {};
    Box console_box = {};
    Box list_box = {};
    size_t list_top = 0;
} screen;

namespace {

constexpr int k_wide_screen = 60;   // columns from which the list has a place of its own
constexpr int k_list_columns = 12;  // at least, there
constexpr int k_divided_rows = 10;  // from which text and console share the height
constexpr int k_roomy_status = 30;  // columns from which the bottom line names the key for help
constexpr uint32_t k_trail_max = 31;

// ---- Where things are ---------------------------------------------------------------------------

int list_width(int columns) {
    if (columns < k_wide_screen) {
        return screen.focus == Part::list ? columns : 0;
    }
    return std::clamp(list_columns() + 2, k_list_columns, columns / 3);
}

int console_rows(int rows) {
    const int wanted = static_cast<int>(std::min<size_t>(screen.console.rows.size(), 1000));
    return std::clamp(wanted, 3, rows / 2);
}

// The console takes the lower part of a box, or all of one that is too low to divide.
void place_panes(Box box) {
    screen.text_box = box;
    screen.console_box = {box.row, box.column, 0, box.columns};
    if (!screen.console_open) {
        return;
    }
    if (box.rows < k_divided_rows) {
        Box *hidden = screen.focus == Part::text ? &screen.console_box : &screen.text_box;
        screen.console_box.rows = box.rows;
        hidden->rows = 0;
        return;
    }
    pane_resize(&screen.console, box.columns, screen.console.height);
    const int rows = console_rows(box.rows);
    screen.text_box.rows = box.rows - rows - 1;
    screen.console_box = {box.row + box.rows - rows, box.column, rows, box.columns};
}

void place_parts(int rows) {
    const int columns = terminal_columns();
    const int list = list_width(columns);
    const bool beside = list > 0 && list < columns;
    screen.list_box = {0, 0, rows, beside ? list - 1 : list};
    const int left = beside ? list + 1 : 0;
    place_panes({0, left, list < columns ? rows : 0, columns - left});
    pane_resize(&screen.text, screen.text_box.columns, screen.text_box.rows);
    pane_resize(&screen.console, screen.console_box.columns, screen.console_box.rows);
}

bool holds(const Box &box, int row, int column) {
    return row >= box.row && row < box.row + box.rows && column >= box.column &&
           column < box.column + box.columns;
}

// ---- Drawing ------------------------------------------------------------------------------------

// Puts what fits of a line into so many columns; says how many it took.
int put_line(int row, int column, int columns, std::string_view line, Style style) {
    int used = 0;
    for (size_t at = 0; at < line.size();) {
        const Glyph glyph = glyph_at(line, at, used);
        if (used + glyph.width > columns) {
            break;
        }
        terminal_put(row, column + used, glyph.shown, style);
        used += glyph.width;
        at += glyph.size;
    }
    return used;
}

// Columns of a short line.
int columns_of(std::string_view line) {
    int columns = 0;
    for (size_t at = 0; at < line.size();) {
        const Glyph glyph = glyph_at(line, at, columns);
        columns += glyph.width;
        at += glyph.size;
    }
    return columns;
}

bool covers(const ByteRange &span, size_t at) {
    return span.begin <= at && at < span.end;
}

// The first link that does not end before this byte.
size_t link_from(const Pane &pane, size_t at) {
    const auto found =
        std::partition_point(pane.links.begin(), pane.links.end(),
                             [at](const PaneLink &link) { return link.at.end <= at; });
    return static_cast<size_t>(found - pane.links.begin());
}

Style style_at(const Pane &pane, size_t at, bool active) {
    if (covers(pane.match, at)) {
        return k_style_match;
    }
    const size_t link = link_from(pane, at);
    if (link == pane.links.size() || !covers(pane.links[link].at, at)) {
        return k_style_plain;
    }
    return link == pane.selected && active ? k_style_selected : k_style_link;
}

void draw_row(const Pane &pane, const ByteRange &span, const Box &box, int row, bool active) {
    const std::string_view line = std::string_view(pane.text).substr(0, span.end);
    int column = 0;
    for (size_t at = span.begin; at < span.end;) {
        const Glyph glyph = glyph_at(line, at, column);
        if (column + glyph.width > box.columns) {
            break;
        }
        terminal_put(row, box.column + column, glyph.shown, style_at(pane, at, active));
        column += glyph.width;
        at += glyph.size;
    }
}

void draw_pane(const Pane &pane, const Box &box, bool active) {
    for (int i = 0; i < box.rows; ++i) {
        const size_t row = pane.top + static_cast<size_t>(i);
        if (row < pane.rows.size()) {
            draw_row(pane, pane.rows[row], box, box.row + i, active);
        }
    }
}

void draw_console() {
    const Box &box = screen.console_box;
    if (box.rows == 0) {
        return;
    }
    if (box.row > 0) {
        const std::string title =
            screen.focus == Part::console ? " console, Esc closes " : " console ";
        terminal_fill(box.row - 1, box.column, box.columns, k_style_status);
        put_line(box.row - 1, box.column, box.columns, title, k_style_status);
    }
    draw_pane(screen.console, box, screen.focus == Part::console);
}

// Scrolls the list as little as it takes to show the chosen item.
void keep_chosen_in_list() {
    const size_t rows = static_cast<size_t>(screen.list_box.rows);
    const size_t chosen = list_chosen();
    const size_t count = list_shown().size();
    screen.list_top = std::min(screen.list_top, count > rows ? count - rows : 0);
    if (chosen < screen.list_top) {
        screen.list_top = chosen;
    } else if (chosen >= screen.list_top + rows) {
        screen.list_top = chosen - rows + 1;
    }
}

void draw_item(size_t item, int row) {
    const Box &box = screen.list_box;
    const CellHandle cell = list_shown()[item];
    const Style style = item == list_chosen()    ? k_style_selected
                        : cell == current_cell() ? k_style_link
                                                 : k_style_plain;
    if (style == k_style_selected) {
        terminal_fill(row, box.column, box.columns, style);
    }
    put_line(row, box.column, box.columns, text_bytes(cell_name(cell)), style);
}

void draw_list() {
    const Box &box = screen.list_box;
    if (box.columns <= 0 || box.rows <= 0) {
        return;
    }
    keep_chosen_in_list();
    for (int i = 0; i < box.rows; ++i) {
        const size_t item = screen.list_top + static_cast<size_t>(i);
        if (item < list_shown().size()) {
            draw_item(item, box.row + i);
        }
        if (box.columns < terminal_columns()) {
            terminal_put(box.row + i, box.columns, L"\u2502", k_style_dim);
        }
    }
}

// ---- The bottom line ----------------------------------------------------------------------------

// Where the user is on the way that Back and Forward go, of how many.
std::string trail_position() {
    CellHandle entries[k_trail_max];
    const uint32_t before = trail_entries(entries);
    const uint32_t behind = forward_entries(entries);
    return std::to_string(before + 1) + "/" + std::to_string(before + 1 + behind);
}

std::string scroll_position() {
    const Pane &pane = *screen_pane();
    const size_t shown = static_cast<size_t>(pane.height);
    if (pane.rows.size() <= shown) {
        return "";
    }
    return std::to_string(pane.top * 100 / (pane.rows.size() - shown)) + "%  ";
}

std::string state_left() {
    const std::string name = current_cell() != 0 ? text_bytes(cell_name(current_cell())) : "";
    const std::string mark = web_changed() ? "* " : "";
    return mark + name + " (" + doc_current_display_name() + ")";
}

void draw_state(int row) {
    const int columns = terminal_columns();
    const std::string right =
        scroll_position() + trail_position() + (columns >= k_roomy_status ? "  ? help" : "");
    const int room = columns - columns_of(right) - 1;
    terminal_fill(row, 0, columns, k_style_status);
    put_line(row, 0, room - 1, state_left(), k_style_status);
    put_line(row, std::max(room, 0), columns, right, k_style_status);
}

// What the bottom has to say; "" for the state of things.
std::string bottom_text() {
    if (!screen.question.empty()) {
        return screen.question;
    }
    if (screen.focus == Part::list && screen.message.empty()) {
        return "Cell: " + list_filter();
    }
    return screen.message;
}

// Leaves in screen.bottom what is said; the rows that it takes.
int place_bottom() {
    pane_set_text(&screen.bottom, bottom_text());
    const int wanted = static_cast<int>(std::min<size_t>(screen.bottom.rows.size(), 1000));
    pane_resize(&screen.bottom, terminal_columns(), wanted);
    pane_resize(&screen.bottom, terminal_columns(), static_cast<int>(screen.bottom.rows.size()));
    const int most = std::max(terminal_rows() - 1, 1);
    return std::min(screen.bottom.height, most);
}

// Columns that the last row of a question takes: the cursor goes behind it.
int end_of_bottom() {
    const ByteRange last = screen.bottom.rows.back();
    const std::string_view text = screen.bottom.text;
    return std::min(columns_of(text.substr(last.begin, last.end - last.begin)),
                    terminal_columns() - 1);
}

void draw_bottom(int rows) {
    const int row = terminal_rows() - rows;
    if (screen.bottom.text.empty()) {
        draw_state(row);
        return;
    }
    pane_resize(&screen.bottom, terminal_columns(), rows);
    screen.bottom.top = screen.bottom.rows.size() - static_cast<size_t>(rows);
    draw_pane(screen.bottom, {row, 0, rows, terminal_columns()}, false);
}

bool asks() {
    return !screen.question.empty() || (screen.focus == Part::list && screen.message.empty());
}

}  // namespace

Pane *screen_text() {
    return &screen.text;
}

Pane *screen_console() {
    return &screen.console;
}

Part screen_focus() {
    return screen.focus;
}

void screen_set_focus(Part part) {
    screen.focus = part;
}

bool screen_console_open() {
    return screen.console_open;
}

void screen_open_console() {
    screen.console_open = true;
    screen.focus = Part::console;
}

void screen_close_console() {
    screen.console_open = false;
    screen.focus = Part::text;
}

Pane *screen_pane() {
    return screen.focus == Part::console ? &screen.console : &screen.text;
}

void screen_message(std::string text) {
    screen.message = std::move(text);
}

void screen_question(std::string text) {
    screen.question = std::move(text);
}

void screen_draw() {
    terminal_erase();
    const int bottom = place_bottom();
    place_parts(std::max(terminal_rows() - bottom, 0));
    draw_list();
    draw_pane(screen.text, screen.text_box, screen.focus == Part::text);
    draw_console();
    draw_bottom(bottom);
    if (asks()) {
        terminal_show(terminal_rows() - 1, end_of_bottom());
    } else {
        terminal_show(-1, 0);
    }
}

void screen_reveal(size_t at) {
    place_parts(std::max(terminal_rows() - place_bottom(), 0));
    const size_t top = screen.text.top;
    pane_reveal(&screen.text, at);
    if (screen.text.top != top) {
        const long row = static_cast<long>(pane_row_of(screen.text, at));
        pane_scroll(&screen.text,
                    row - screen.text.height / 2 - static_cast<long>(screen.text.top));
    }
}

Place screen_place(int row, int column) {
    if (holds(screen.list_box, row, column)) {
        const size_t item = screen.list_top + static_cast<size_t>(row);
        return {Part::list, std::min(item, list_shown().size())};
    }
    for (const Part part : {Part::text, Part::console}) {
        const bool is_text = part == Part::text;
        const Box &box = is_text ? screen.text_box : screen.console_box;
        const Pane &pane = is_text ? screen.text : screen.console;
        if (holds(box, row, column)) {
            return {part, pane_byte_at(pane, row - box.row, column - box.column)};
        }
    }
    return {Part::none, 0};
}
