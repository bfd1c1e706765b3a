// A web in numbers.
#include "cli/exit_status.h"
#include "cli/links/commands.h"
#include "cli/links/found_lines.h"
#include "cli/links/link_table.h"
#include "cli/links/wanted.h"
#include "cli/print.h"
#include "cli/webs.h"
#include "core/block_arena.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

size_t total(const Notes &notes, size_t (*of)(const Note &note)) {
    size_t sum = 0;
    for (const Note &note : notes) {
        sum += of(note);
    }
    return sum;
}

size_t count_lonely(const Notes &notes, const Targets &targets, bool home_too) {
    size_t lonely = 0;
    for (size_t i = 0; i < notes.size(); ++i) {
        lonely += targets[i].empty() && (home_too || !is_home(notes[i])) ? 1U : 0U;
    }
    return lonely;
}

// The first note of those for which `of` is greatest.
template <typename Of> const Note &greatest(const Notes &notes, Of of) {
    return *std::max_element(notes.begin(), notes.end(),
                             [of](const Note &a, const Note &b) { return of(a) < of(b); });
}

nlohmann::ordered_json stats_of(const std::string &file, const Notes &notes) {
    const LinkTable table = link_table(notes, looks_like_a_name);
    const Targets targets = link_targets(notes, table);
    const Targets sources = reversed(targets);
    const auto linking = [&](const Note &note) {
        return sources[static_cast<size_t>(&note - notes.data())].size();
    };
    const auto size = [](const Note &note) { return note.text.size(); };
    return {{"file", file},
            {"cells", notes.size()},
            {"lines", total(notes, [](const Note &note) { return lines_of(note.text).size(); })},
            {"words", table.words},
            {"bytes", total(notes, size)},
            {"links", table.links.size()},
            {"orphans", count_lonely(notes, sources, false)},
            {"deadends", count_lonely(notes, targets, true)},
            {"wanted", wanted_words(table).size()},
            {"longest", greatest(notes, size).name},
            {"most_linked", table.links.empty() ? "" : greatest(notes, linking).name},
            {"blocks_used", blocks_in_use()},
            {"blocks_free", blocks_free()}};
}

int print_stats(const CommandLine &line, const std::string &file, const Notes &notes) {
    const nlohmann::ordered_json stats = stats_of(file, notes);
    if (line.json) {
        print_json(stats);
        return k_exit_done;
    }
    for (const auto &[key, value] : stats.items()) {
        if (key != "file") {
            print_file(file_shown(line, file));
            print_line(key + ": " + (value.is_string() ? value.get<std::string>() : value.dump()));
        }
    }
    return k_exit_done;
}

}  // namespace

int command_stats(const CommandLine &line) {
    return read_webs(line, [&line](const std::string &file, const Notes &notes) {
        return print_stats(line, file, notes);
    });
}
