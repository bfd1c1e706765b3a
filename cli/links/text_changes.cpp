#include "cli/links/text_changes.h"

#include "cli/links/found_lines.h"
#include "cli/print.h"

#include <nlohmann/json.hpp>

namespace {

std::string with_pieces_replaced(std::string_view line, const Spans &pieces,
                                 const std::string &replacement) {
    std::string after;
    size_t done = 0;
    for (const Span &piece : pieces) {
        after.append(line, done, piece.begin - done).append(replacement);
        done = piece.begin + piece.size;
    }
    return after.append(line, done);
}

void change_text(Note *note, const PieceFinder &finder, const std::string &replacement,
                 ChangedLines *changed) {
    std::string text;
    size_t done = 0;
    size_t number = 0;
    Spans pieces;
    for (const std::string_view line : lines_of(note->text)) {
        ++number;
        pieces.clear();
        finder(line, &pieces);
        const std::string after = with_pieces_replaced(line, pieces, replacement);
        if (after == line) {
            continue;
        }
        const auto begin = static_cast<size_t>(line.data() - note->text.data());
        text.append(note->text, done, begin - done).append(after);
        done = begin + line.size();
        changed->push_back({note->name, number, std::string(line), after, pieces});
    }
    if (done > 0) {
        note->text = text.append(note->text, done);
    }
}

std::string numbered(char sign, size_t line) {
    return sign + std::to_string(line) + ": ";
}

// What is replaced is marked.
void print_before(const ChangedLine &changed) {
    print(coloured(numbered('-', changed.line), Colour::red));
    print_marked(changed.before, changed.pieces);
}

// The new lines, green as a whole: what came in may hold line ends.
void print_after(const ChangedLine &changed) {
    const std::string after = changed.after + "\n";
    for (const std::string_view line : lines_of(after)) {
        print(coloured(numbered('+', changed.line) + shown(line), Colour::green) + "\n");
    }
}

void print_changed_json(const ChangedLine &changed) {
    print_json({{"cell", changed.cell},
                {"line", changed.line},
                {"before", changed.before},
                {"after", changed.after}});
}

}  // namespace

ChangedLines replace_in_texts(Notes *notes, const PieceFinder &finder,
                              const std::string &replacement) {
    ChangedLines changed;
    for (Note &note : *notes) {
        change_text(&note, finder, replacement, &changed);
    }
    return changed;
}

void print_changed(const CommandLine &line, const ChangedLines &all, std::string_view cell) {
    for (const ChangedLine &changed : all) {
        if (line.json) {
            print_changed_json(changed);
            continue;
        }
        if (changed.cell != cell) {
            print(coloured(shown(changed.cell), Colour::cyan) + "\n");
            cell = changed.cell;
        }
        print_before(changed);
        print_after(changed);
    }
}
