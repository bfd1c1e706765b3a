#include "cli/line_diff.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

namespace {

constexpr std::string_view k_line_end = "\r\n";
constexpr size_t k_none = SIZE_MAX;

// Equal lines have equal numbers. Lines that the other text does not have are left out.
struct Side {
    std::vector<uint32_t> numbers;
    std::vector<size_t> places;  // of each in the text
};

struct Comparison {
    Side before;
    Side after;
    uint32_t count;                // of numbers
    std::vector<size_t> partners;  // of each line before, the line that it became; or none
};

// Parts of both sides that are compared with each other. `depth` counts how often they were parted.
struct Range {
    size_t before;
    size_t before_to;
    size_t after;
    size_t after_to;
    int depth;
};

void match(Comparison *c, size_t before, size_t after) {
    c->partners[c->before.places[before]] = c->after.places[after];
}

bool same(const Comparison &c, size_t before, size_t after) {
    return c.before.numbers[before] == c.after.numbers[after];
}

// ---- Numbers for lines --------------------------------------------------------------------------

using Numbers = std::unordered_map<std::string_view, uint32_t>;

Numbers numbers_of(const Lines &lines) {
    Numbers numbers;
    numbers.reserve(lines.size());
    for (const std::string_view line : lines) {
        numbers.try_emplace(line, static_cast<uint32_t>(numbers.size()));
    }
    return numbers;
}

Side side_of(const Lines &lines, const Numbers &numbers) {
    Side side;
    for (size_t i = 0; i < lines.size(); ++i) {
        const auto found = numbers.find(lines[i]);
        if (found != numbers.end()) {
            side.numbers.push_back(found->second);
            side.places.push_back(i);
        }
    }
    return side;
}

// Numbers the lines that both texts have.
Comparison comparison_of(const Lines &before, const Lines &after) {
    const Numbers of_before = numbers_of(before);
    const Side shared = side_of(after, of_before);
    Numbers both;
    for (const size_t place : shared.places) {
        both.emplace(after[place], of_before.at(after[place]));
    }
    return {side_of(before, both), shared, static_cast<uint32_t>(of_before.size()),
            std::vector<size_t>(before.size(), k_none)};
}

// ---- Lines that stand once on each side ---------------------------------------------------------

struct Anchor {
    size_t before;
    size_t after;
    size_t previous;  // in the longest row that ends here
};

// In the order of the lines before.
std::vector<Anchor> single_lines(const Comparison &c, const Range &range) {
    struct Seen {
        uint32_t before = 0;
        uint32_t after = 0;
        size_t at = 0;
    };
    static_assert(sizeof(Seen) <= 16);
    std::unordered_map<uint32_t, Seen> seen;
    for (size_t i = range.before; i < range.before_to; ++i) {
        ++seen[c.before.numbers[i]].before;
    }
    for (size_t i = range.after; i < range.after_to; ++i) {
        Seen &line = seen[c.after.numbers[i]];
        ++line.after;
        line.at = i;
    }
    std::vector<Anchor> singles;
    for (size_t i = range.before; i < range.before_to; ++i) {
        const Seen &line = seen[c.before.numbers[i]];
        if (line.before == 1 && line.after == 1) {
            singles.push_back({i, line.at, k_none});
        }
    }
    return singles;
}

// The longest row of them that is in order on both sides.
std::vector<Anchor> longest_row(std::vector<Anchor> singles) {
    std::vector<size_t> ends;  // of the rows of each length, the one that ends first
    for (size_t i = 0; i < singles.size(); ++i) {
        const auto place =
            std::lower_bound(ends.begin(), ends.end(), i, [&singles](size_t end, size_t wanted) {
                return singles[end].after < singles[wanted].after;
            });
        singles[i].previous = place == ends.begin() ? k_none : *(place - 1);
        if (place == ends.end()) {
            ends.push_back(i);
        } else {
            *place = i;
        }
    }
    std::vector<Anchor> row;
    for (size_t i = ends.empty() ? k_none : ends.back(); i != k_none; i = singles[i].previous) {
        row.push_back(singles[i]);
    }
    std::reverse(row.begin(), row.end());
    return row;
}

// ---- Lines that repeat: the shortest way of deletions and insertions ----------------------------

// So many lines are looked ahead; then the way that came furthest is taken. A window costs the
// square of it and brings the comparison on by at least as many lines.
constexpr int k_window = 128;
constexpr int k_nowhere = -1;

// How far into the lines before a way of d steps comes on each diagonal (lines before minus lines
// after), from the start of the range: a row for each d, of 2d + 1 diagonals.
using Reached = std::vector<int>;

size_t place_of(int d, int diagonal) {
    const int place = d * d + d + diagonal;
    return static_cast<size_t>(place);
}

int reached(const Reached &rows, int d, int diagonal) {
    if (d < 0 || diagonal < -d || diagonal > d) {
        return k_nowhere;
    }
    return rows[place_of(d, diagonal)];
}

struct Size {
    int before;
    int after;
};

// Where the d-th step leads to on this diagonal, by a deletion or by an insertion.
int after_deletion(const Reached &rows, const Size &size, int d, int diagonal) {
    const int from = reached(rows, d - 1, diagonal - 1);
    return from == k_nowhere || from >= size.before ? k_nowhere : from + 1;
}

int after_insertion(const Reached &rows, const Size &size, int d, int diagonal) {
    const int from = reached(rows, d - 1, diagonal + 1);
    return from == k_nowhere || from - diagonal > size.after ? k_nowhere : from;
}

int after_step(const Reached &rows, const Size &size, int d, int diagonal) {
    return d == 0 ? 0
                  : std::max(after_deletion(rows, size, d, diagonal),
                             after_insertion(rows, size, d, diagonal));
}

size_t at(size_t base, int offset) {
    return base + static_cast<size_t>(offset);
}

// Follows equal lines.
int slide(const Comparison &c, const Range &range, const Size &size, int diagonal, int before) {
    if (before != k_nowhere) {
        while (before < size.before && before - diagonal < size.after &&
               same(c, at(range.before, before), at(range.after, before - diagonal))) {
            ++before;
        }
    }
    return before;
}

// Matches the lines on the way that ends there; returns how far it comes on both sides.
Size take_way(Comparison *c, const Range &range, const Size &size, const Reached &rows, int d,
              int diagonal) {
    const int end = reached(rows, d, diagonal);
    const Size came = {end, end - diagonal};
    int before = end;
    for (;; --d) {
        for (const int from = after_step(rows, size, d, diagonal); before > from; --before) {
            match(c, at(range.before, before - 1), at(range.after, before - 1 - diagonal));
        }
        if (d == 0) {
            return came;
        }
        const bool deleted = before == after_deletion(rows, size, d, diagonal);
        diagonal += deleted ? -1 : 1;
        before -= deleted ? 1 : 0;
    }
}

// The diagonal on which d steps come furthest, both sides counted.
int furthest(const Reached &rows, int d) {
    int best = -d;
    int most = k_nowhere;
    for (int diagonal = -d; diagonal <= d; diagonal += 2) {
        const int before = reached(rows, d, diagonal);
        if (before != k_nowhere && 2 * before - diagonal > most) {
            most = 2 * before - diagonal;
            best = diagonal;
        }
    }
    return best;
}

// Compares from the start of the range on; to its end, or as far as the window goes.
Size compare_window(Comparison *c, const Range &range) {
    constexpr size_t k_longest = INT32_MAX / 4;
    const Size size = {static_cast<int>(std::min(range.before_to - range.before, k_longest)),
                       static_cast<int>(std::min(range.after_to - range.after, k_longest))};
    Reached rows;
    for (int d = 0;; ++d) {
        rows.resize(place_of(d, d) + 1, k_nowhere);
        for (int diagonal = -d; diagonal <= d; diagonal += 2) {
            const int before =
                slide(*c, range, size, diagonal, after_step(rows, size, d, diagonal));
            rows[place_of(d, diagonal)] = before;
            if (before == size.before && before - diagonal == size.after) {
                return take_way(c, range, size, rows, d, diagonal);
            }
        }
        if (d == k_window) {
            return take_way(c, range, size, rows, d, furthest(rows, d));
        }
    }
}

void compare_by_steps(Comparison *c, Range range) {
    while (range.before < range.before_to && range.after < range.after_to) {
        const Size came = compare_window(c, range);
        range.before = at(range.before, came.before);
        range.after = at(range.after, came.after);
    }
}

// -------------------------------------------------------------------------------------------------

void match_ends(Comparison *c, Range *range) {
    const auto any = [range] {
        return range->before < range->before_to && range->after < range->after_to;
    };
    for (; any() && same(*c, range->before, range->after); ++range->before, ++range->after) {
        match(c, range->before, range->after);
    }
    while (any() && same(*c, range->before_to - 1, range->after_to - 1)) {
        match(c, --range->before_to, --range->after_to);
    }
}

// Compares what stands between lines that stand once on each side, as long as there are any.
void compare(Comparison *c) {
    constexpr int k_deepest = 16;
    std::vector<Range> waiting = {{0, c->before.numbers.size(), 0, c->after.numbers.size(), 0}};
    while (!waiting.empty()) {
        Range range = waiting.back();
        waiting.pop_back();
        match_ends(c, &range);
        if (range.before == range.before_to || range.after == range.after_to) {
            continue;
        }
        const std::vector<Anchor> row =
            range.depth < k_deepest ? longest_row(single_lines(*c, range)) : std::vector<Anchor>();
        if (row.empty()) {
            compare_by_steps(c, range);
            continue;
        }
        for (const Anchor &anchor : row) {
            match(c, anchor.before, anchor.after);
            waiting.push_back(
                {range.before, anchor.before, range.after, anchor.after, range.depth + 1});
            range.before = anchor.before + 1;
            range.after = anchor.after + 1;
        }
        ++range.depth;
        waiting.push_back(range);
    }
}

}  // namespace

Lines split_lines(std::string_view text) {
    Lines lines;
    size_t begin = 0;
    for (size_t end; (end = text.find(k_line_end, begin)) != std::string_view::npos;
         begin = end + k_line_end.size()) {
        lines.push_back(text.substr(begin, end - begin));
    }
    if (!text.empty()) {
        lines.push_back(text.substr(begin));
    }
    return lines;
}

std::string join_lines(const Lines &lines) {
    std::string text;
    for (size_t i = 0; i < lines.size(); ++i) {
        text.append(i == 0 ? "" : k_line_end).append(lines[i]);
    }
    return text;
}

std::vector<LineChange> line_changes(const Lines &before, const Lines &after) {
    Comparison c = comparison_of(before, after);
    compare(&c);
    std::vector<LineChange> changes;
    size_t i = 0;
    size_t j = 0;
    while (i < before.size() || j < after.size()) {
        if (i < before.size() && c.partners[i] == j) {
            ++i;
            ++j;
            continue;
        }
        const LineChange from = {i, 0, j, 0};
        while (i < before.size() && c.partners[i] == k_none) {
            ++i;
        }
        j = i < before.size() ? c.partners[i] : after.size();
        changes.push_back({from.before_from, i, from.after_from, j});
    }
    return changes;
}
