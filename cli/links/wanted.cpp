#include "cli/links/wanted.h"

#include "cli/exit_status.h"
#include "cli/links/commands.h"
#include "cli/links/found_lines.h"
#include "cli/print.h"
#include "cli/webs.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <set>

namespace {

bool is_small(char ch) {
    return ch >= 'a' && ch <= 'z';
}

bool is_capital(char ch) {
    return ch >= 'A' && ch <= 'Z';
}

// By name: its places, in the cells' order.
std::map<std::string, WantedWord> by_name(const LinkTable &table) {
    std::map<std::string, WantedWord> words;
    for (const WordPlace &place : table.unnamed) {
        const std::string_view word = word_at(place);
        WantedWord &wanted = words[folded_name(word)];
        if (wanted.places.empty()) {
            wanted.word = word;
        }
        wanted.places.push_back(place);
    }
    return words;
}

void print_wanted_json(const std::string &file, const Notes &notes, const WantedWord &wanted) {
    std::set<size_t> cells;
    for (const WordPlace &place : wanted.places) {
        cells.insert(place.cell);
    }
    auto names = nlohmann::ordered_json::array();
    for (const size_t cell : cells) {
        names.push_back(notes[cell].name);
    }
    print_json(
        {{"file", file}, {"word", wanted.word}, {"count", wanted.places.size()}, {"cells", names}});
}

int print_wanted(const CommandLine &line, const std::string &file, const Notes &notes) {
    const std::vector<WantedWord> words = wanted_words(link_table(notes, looks_like_a_name));
    for (const WantedWord &wanted : words) {
        if (line.json) {
            print_wanted_json(file, notes, wanted);
        } else if (line.zero) {
            print_listed(line, file, wanted.word);
        } else {
            print_counted(line, file, "word", wanted.word, wanted.places.size());
        }
    }
    return words.empty() ? k_exit_refused : k_exit_done;
}

}  // namespace

bool looks_like_a_name(std::string_view word) {
    for (size_t i = 1; i < word.size(); ++i) {
        const bool inner_line = word[i] == '_' && i + 1 < word.size();
        if (inner_line || (is_small(word[i - 1]) && is_capital(word[i]))) {
            return is_good_name(std::string(word));
        }
    }
    return false;
}

std::vector<WantedWord> wanted_words(const LinkTable &table) {
    std::vector<WantedWord> words;
    for (auto &[name, wanted] : by_name(table)) {
        words.push_back(wanted);
    }
    std::stable_sort(words.begin(), words.end(), [](const WantedWord &a, const WantedWord &b) {
        return a.places.size() > b.places.size();
    });
    return words;
}

int command_wanted(const CommandLine &line) {
    return read_webs(line, [&line](const std::string &file, const Notes &notes) {
        return print_wanted(line, file, notes);
    });
}
