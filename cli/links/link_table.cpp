#include "cli/links/link_table.h"

#include "cli/link_words.h"
#include "core/text.h"

#include <algorithm>
#include <unordered_map>

namespace {

// Equal for names that are equal to compare_names().
struct FoldedHash {
    size_t operator()(std::string_view name) const {
        uint32_t hash = 0x811C9DC5;
        for (const char ch : name) {
            hash = (hash ^ static_cast<uint8_t>(fold_char(ch))) * 0x01000193;
        }
        return hash;
    }
};

struct FoldedEqual {
    bool operator()(std::string_view a, std::string_view b) const {
        return a.size() == b.size() && compare_names(a, b) == 0;
    }
};

using NameIndex = std::unordered_map<std::string_view, size_t, FoldedHash, FoldedEqual>;

NameIndex name_index(const Notes &notes) {
    NameIndex index(notes.size() * 2);
    for (size_t i = 0; i < notes.size(); ++i) {
        index.emplace(notes[i].name, i);
    }
    return index;
}

// Runs the function on every word of a note's text, in the text's order.
template <typename Function> void for_words(const Notes &notes, size_t cell, Function function) {
    WordPlace place = {cell, 0, {}, {}};
    for (const std::string_view text : lines_of(notes[cell].text)) {
        place.text = text;
        ++place.line;
        size_t at = 0;
        while (true) {
            const std::string_view word = next_link_word(text, &at);
            if (word.empty()) {
                break;
            }
            place.span = {at - word.size(), word.size()};
            function(place);
        }
    }
}

}  // namespace

std::string_view word_at(const WordPlace &place) {
    return place.text.substr(place.span.begin, place.span.size);
}

LinkTable link_table(const Notes &notes, bool (*keeps)(std::string_view word)) {
    LinkTable table = {};
    const NameIndex index = name_index(notes);
    for (size_t cell = 0; cell < notes.size(); ++cell) {
        for_words(notes, cell, [&](const WordPlace &place) {
            ++table.words;
            const std::string_view word = word_at(place);
            const auto found = index.find(word);
            if (found != index.end() && found->second != cell) {
                table.links.push_back({place, found->second});
            } else if (found == index.end() && keeps != nullptr && keeps(word)) {
                table.unnamed.push_back(place);
            }
        });
    }
    return table;
}

Targets link_targets(const Notes &notes) {
    return link_targets(notes, link_table(notes));
}

Targets link_targets(const Notes &notes, const LinkTable &table) {
    Targets targets(notes.size());
    for (const Link &link : table.links) {
        targets[link.place.cell].push_back(link.target);
    }
    for (std::vector<size_t> &list : targets) {
        std::sort(list.begin(), list.end());
        list.erase(std::unique(list.begin(), list.end()), list.end());
    }
    return targets;
}

Targets reversed(const Targets &targets) {
    Targets sources(targets.size());
    for (size_t from = 0; from < targets.size(); ++from) {
        for (const size_t to : targets[from]) {
            sources[to].push_back(from);
        }
    }
    return sources;
}

size_t note_index(const Notes &notes, const std::string &name) {
    const Note *note = find_note(notes, name);
    return note != nullptr ? static_cast<size_t>(note - notes.data()) : notes.size();
}

bool is_home(const Note &note) {
    return compare_names(note.name, "home") == 0;
}
