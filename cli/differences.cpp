#include "cli/differences.h"

#include "cli/line_diff.h"
#include "cli/print.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace {

void add_lines(std::vector<LineDifference> *list, const char *field, bool added, const Lines &lines,
               size_t from, size_t to) {
    for (size_t i = from; i < to; ++i) {
        list->push_back({field, added, i + 1, lines[i]});
    }
}

// The empty line behind a last line end is told only where it is all that differs.
void drop_last_line_ends(std::vector<LineDifference> *list, size_t first, size_t old_count,
                         size_t new_count) {
    const auto begin = list->begin() + static_cast<std::ptrdiff_t>(first);
    const auto kept = std::remove_if(begin, list->end(), [=](const LineDifference &line) {
        return line.text.empty() && line.line == (line.added ? new_count : old_count);
    });
    if (kept != begin) {
        list->erase(kept, list->end());
    }
}

void add_field(std::vector<LineDifference> *list, const char *field, std::string_view before,
               std::string_view after) {
    if (before == after) {
        return;
    }
    const size_t first = list->size();
    const Lines old_lines = split_lines(before);
    const Lines new_lines = split_lines(after);
    for (const LineChange &change : line_changes(old_lines, new_lines)) {
        add_lines(list, field, false, old_lines, change.before_from, change.before_to);
        add_lines(list, field, true, new_lines, change.after_from, change.after_to);
    }
    drop_last_line_ends(list, first, old_lines.size(), new_lines.size());
}

CellDifference difference_of(const Note *before, const Note *after) {
    static const Note k_nothing;
    const Note &from = before != nullptr ? *before : k_nothing;
    const Note &to = after != nullptr ? *after : k_nothing;
    CellDifference cell = {before, after, {}};
    add_field(&cell.lines, "text", from.text, to.text);
    add_field(&cell.lines, "script", from.script, to.script);
    add_field(&cell.lines, "value", from.value, to.value);
    return cell;
}

// ---- As lines -----------------------------------------------------------------------------------

void print_coloured(const std::string &line, Colour colour) {
    print(coloured(shown(line), colour) + "\n");
}

void print_heading(const CellDifference &cell) {
    if (cell.before == nullptr) {
        print_coloured("+" + cell.after->name, Colour::green);
    } else if (cell.after == nullptr) {
        print_coloured("-" + cell.before->name, Colour::red);
    } else {
        const std::string &name = cell.before->name;
        const bool same = name == cell.after->name;
        print_coloured(same ? name : name + " -> " + cell.after->name, Colour::cyan);
    }
}

// "-3: a line", and "-script 3: a line" where it is not the text's.
void print_difference(const LineDifference &line) {
    const bool of_text = strcmp(line.field, "text") == 0;
    print_coloured((line.added ? "+" : "-") + (of_text ? "" : std::string(line.field) + " ") +
                       std::to_string(line.line) + ": " + std::string(line.text),
                   line.added ? Colour::green : Colour::red);
}

}  // namespace

std::vector<CellDifference> differences_between(const Notes &before, const Notes &after) {
    std::vector<CellDifference> cells;
    auto old_note = before.begin();
    auto new_note = after.begin();
    while (old_note != before.end() || new_note != after.end()) {
        const int order = old_note == before.end()  ? 1
                          : new_note == after.end() ? -1
                                                    : compare_names(old_note->name, new_note->name);
        const Note *from = order <= 0 ? &*old_note++ : nullptr;
        const Note *to = order >= 0 ? &*new_note++ : nullptr;
        if (from == nullptr || to == nullptr || *from != *to) {
            cells.push_back(difference_of(from, to));
        }
    }
    return cells;
}

void print_differences(const Notes &before, const Notes &after) {
    for (const CellDifference &cell : differences_between(before, after)) {
        print_heading(cell);
        for (const LineDifference &line : cell.lines) {
            print_difference(line);
        }
    }
}
