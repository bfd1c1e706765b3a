// find and replace: a text or an expression in all texts, or in the cells' names.
#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/links/commands.h"
#include "cli/links/found_lines.h"
#include "cli/links/pattern.h"
#include "cli/links/text_changes.h"
#include "cli/print.h"
#include "cli/webs.h"

#include <nlohmann/json.hpp>

namespace {

// A search through one web. It ends at the first line that is given up.
struct Search {
    const CommandLine *line;
    std::string_view file;
    bool found;
    bool gave_up;
};

void print_found_json(const FoundLine &found, const Spans &spans) {
    auto matches = nlohmann::ordered_json::array();
    for (const Span &span : spans) {
        matches.push_back(found.text.substr(span.begin, span.size));
    }
    print_json({{"file", found.file},
                {"cell", found.cell},
                {"line", found.line},
                {"text", found.text},
                {"matches", matches}});
}

void print_match(const Search &search, const Note &note, size_t number, std::string_view text,
                 const Spans &spans) {
    if (search.line->json) {
        print_found_json({search.file, note.name, number, text}, spans);
    } else {
        print_found({file_shown(*search.line, search.file), note.name, number, text}, spans);
    }
}

// All matches of a line are needed only where they are shown.
Matched match_line(const CommandLine &line, std::string_view text, Spans *spans) {
    if (line.json || colours_wanted()) {
        return pattern_find_all(text, spans);
    }
    Span first;
    return pattern_find(text, 0, &first);
}

// A text to look for has no line end, so that it is nowhere in the lines when it is not in the
// whole.
bool is_nowhere(const CommandLine &line, const Note &note) {
    Span first;
    return !line.expression && pattern_find(note.text, 0, &first) == Matched::no;
}

// How many lines of the text match; they are printed unless only cells are asked for.
size_t search_text(Search *search, const Note &note) {
    const CommandLine &line = *search->line;
    const bool one_will_do = prints_cells_alone(line);
    size_t count = 0;
    size_t number = 0;
    Spans spans;
    for (const std::string_view text : lines_of(note.text)) {
        ++number;
        const Matched matched = match_line(line, text, &spans);
        if (matched == Matched::gave_up) {
            search->gave_up = true;
            refuse_cell(note.name,
                        ("line " + std::to_string(number) + ": the expression takes too many steps")
                            .c_str());
            return count;
        }
        if (matched == Matched::yes) {
            ++count;
            if (one_will_do) {
                return count;
            }
            if (!line.only_counts) {
                print_match(*search, note, number, text, spans);
            }
        }
    }
    return count;
}

void search_note(Search *search, const Note &note) {
    const size_t count = is_nowhere(*search->line, note) ? 0 : search_text(search, note);
    if (count == 0) {
        return;
    }
    search->found = true;
    if (prints_cells_alone(*search->line)) {
        print_listed(*search->line, search->file, note.name);
    } else if (search->line->only_counts) {
        print_counted(*search->line, search->file, "cell", note.name, count);
    }
}

void search_name(Search *search, const Note &note) {
    Span first;
    const Matched matched = pattern_find(note.name, 0, &first);
    if (matched == Matched::yes) {
        search->found = true;
        print_listed(*search->line, search->file, note.name);
    }
    if (matched == Matched::gave_up) {
        search->gave_up = true;
        refuse_cell(note.name, "the expression takes too many steps");
    }
}

int search_web(const CommandLine &line, std::string_view file, const Notes &notes) {
    Search search = {&line, file, false, false};
    for (const Note &note : notes) {
        if (line.in_names) {
            search_name(&search, note);
        } else {
            search_note(&search, note);
        }
        if (search.gave_up) {
            return k_exit_failed;
        }
    }
    return search.found ? k_exit_done : k_exit_refused;
}

int replace_found(const CommandLine &line, Notes *notes, ChangedLines *changed) {
    bool found = false;
    bool gave_up = false;
    *changed = replace_in_texts(
        notes,
        [&found, &gave_up](std::string_view text, Spans *pieces) {
            const Matched matched = pattern_find_all(text, pieces);
            found = found || matched == Matched::yes;
            gave_up = gave_up || matched == Matched::gave_up;
        },
        line.replacement);
    if (gave_up) {
        host_message("a line takes too many steps");
    }
    return gave_up ? k_exit_failed : found ? k_exit_done : k_exit_refused;
}

}  // namespace

int command_find(const CommandLine &line) {
    const int status = pattern_compile(line);
    return status != k_exit_done
               ? status
               : read_webs(line, [&line](const std::string &file, const Notes &notes) {
                     return search_web(line, file, notes);
                 });
}

int command_replace(const CommandLine &line) {
    if (line.wanted.empty()) {
        host_message("what is to be replaced is empty");
        return k_exit_failed;
    }
    const int status = pattern_compile(line);
    if (status != k_exit_done) {
        return status;
    }
    ChangedLines changed;
    return change_web(
        line, [&](Notes *notes) { return replace_found(line, notes, &changed); },
        [&](const Notes &, const Notes &) { print_changed(line, changed); });
}
