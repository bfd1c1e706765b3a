#include "cli/links/link_table.h"

#include "cli/link_words.h"
#include "core/text.h"

#include <algorithm>
#include <bitset>
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

// The names' notes, and marks for the names, so that most words that name nothing need no search.
struct NameIndex {
    std::unordered_map<std::string_view, size_t, FoldedHash, FoldedEqual> notes;
    std::bitset<16384> marks;
};

// The same for equal names, which are not empty.
size_t mark_of(std::string_view name) {
    const auto folded = [name](size_t at) {
        return static_cast<size_t>(static_cast<uint8_t>(fold_char(name[at])));
    };
    return (folded(0) + folded(name.size() / 2) * 31 + folded(name.size() - 1) * 613 +
            name.size() * 257) %
           16384;
}

NameIndex name_index(const Notes &notes) {
    NameIndex index;
    index.notes.reserve(notes.size());
    for (size_t i = 0; i < notes.size(); ++i) {
        index.notes.emplace(notes[i].name, i);
        index.marks.set(mark_of(notes[i].name));
    }
    return index;
}

// The index of the note that a word names, or `none`.
size_t note_named(const NameIndex &index, std::string_view word, size_t none) {
    if (!index.marks.test(mark_of(word))) {
        return none;
    }
    const auto found = index.notes.find(word);
    return found != index.notes.end() ? found->second : none;
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
            const size_t target = note_named(index, word, notes.size());
            if (target == notes.size()) {
                if (keeps != nullptr && keeps(word)) {
                    table.unnamed.push_back(place);
                }
            } else if (target != cell) {
                table.links.push_back({place, target});
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
