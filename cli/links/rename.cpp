#include "cli/exit_status.h"
#include "cli/link_words.h"
#include "cli/links/commands.h"
#include "cli/links/link_table.h"
#include "cli/links/text_changes.h"
#include "cli/print.h"
#include "cli/webs.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

// Why the note cannot have this name; null when it can.
const char *objection(const CommandLine &line, const Notes &notes, const Note *note) {
    const Note *other = find_note(notes, line.replacement);
    if (!is_good_name(line.replacement)) {
        return "Bad cell name supplied";
    }
    if (other != nullptr && other != note) {
        return "is the name of another cell";
    }
    if (line.with_links && !can_be_linked(line.replacement)) {
        return "cannot be a link: no word has such characters";
    }
    return nullptr;
}

// The note stands in the web's order by its name.
void give_name(Notes *notes, Note *note, const std::string &name) {
    Note renamed = std::move(*note);
    notes->erase(notes->begin() + (note - notes->data()));
    renamed.name = name;
    *add_note(notes, name) = std::move(renamed);
}

void find_words(std::string_view line, const std::string &name, Spans *words) {
    size_t at = 0;
    while (true) {
        const std::string_view word = next_link_word(line, &at);
        if (word.empty()) {
            return;
        }
        if (word.size() == name.size() && compare_names(word, name) == 0) {
            words->push_back({at - word.size(), word.size()});
        }
    }
}

int rename_note(const CommandLine &line, Notes *notes, ChangedLines *changed) {
    Note *note = find_note(notes, line.cell);
    if (note == nullptr) {
        return no_such_cell(line.cell);
    }
    if (is_home(*note)) {
        return refuse_cell(note->name, "the home cell keeps its name");
    }
    const char *objected = objection(line, *notes, note);
    if (objected != nullptr) {
        return refuse_cell(line.replacement, objected);
    }
    if (line.with_links) {
        *changed = replace_in_texts(
            notes,
            [&line](std::string_view text, Spans *words) { find_words(text, line.cell, words); },
            link_word_of(line.replacement));
    }
    give_name(notes, note, line.replacement);
    return k_exit_done;
}

// The cell's own lines come first.
void show_renaming(const CommandLine &line, const Notes &before, ChangedLines changed) {
    const std::string &old = find_note(before, line.cell)->name;
    if (line.json) {
        print_json({{"cell", old}, {"renamed", line.replacement}});
    } else {
        print(coloured(shown(old + " -> " + line.replacement), Colour::cyan) + "\n");
    }
    std::stable_partition(changed.begin(), changed.end(),
                          [&old](const ChangedLine &one) { return one.cell == old; });
    print_changed(line, changed, old);
}

}  // namespace

int command_rename(const CommandLine &line) {
    ChangedLines changed;
    return change_web(
        line, [&](Notes *notes) { return rename_note(line, notes, &changed); },
        [&](const Notes &before, const Notes &) { show_renaming(line, before, changed); });
}
