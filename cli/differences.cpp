#include "cli/differences.h"

#include "cli/print.h"

#include <algorithm>

namespace {

void print_lines_with(char sign, const std::vector<std::string_view> &lines, size_t from,
                      size_t to) {
    for (size_t i = from; i < to; ++i) {
        print_line(std::string(1, sign) + std::to_string(i + 1) + ": " + std::string(lines[i]));
    }
}

// The lines between what both begin and end with.
void print_changed_lines(std::string_view before, std::string_view after) {
    const auto old_lines = lines_of(before);
    const auto new_lines = lines_of(after);
    const size_t shorter = std::min(old_lines.size(), new_lines.size());
    size_t head = 0;
    while (head < shorter && old_lines[head] == new_lines[head]) {
        ++head;
    }
    size_t tail = 0;
    while (tail < shorter - head &&
           old_lines[old_lines.size() - 1 - tail] == new_lines[new_lines.size() - 1 - tail]) {
        ++tail;
    }
    print_lines_with('-', old_lines, head, old_lines.size() - tail);
    print_lines_with('+', new_lines, head, new_lines.size() - tail);
}

void print_change(const Note &before, const Note &after) {
    if (before == after) {
        return;
    }
    print_line(before.name == after.name ? before.name : before.name + " -> " + after.name);
    print_changed_lines(before.text, after.text);
    print_changed_lines(before.script, after.script);
    print_changed_lines(before.value, after.value);
}

}  // namespace

void print_differences(const Notes &before, const Notes &after) {
    for (const Note &note : before) {
        const Note *other = find_note(after, note.name);
        if (other == nullptr) {
            print_line("-" + note.name);
        } else {
            print_change(note, *other);
        }
    }
    for (const Note &note : after) {
        if (find_note(before, note.name) == nullptr) {
            print_line("+" + note.name);
            print_changed_lines("", note.text);
        }
    }
}
