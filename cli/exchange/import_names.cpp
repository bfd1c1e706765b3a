#include "cli/exchange/import_names.h"

#include "cli/exchange/file_names.h"
#include "cli/link_words.h"
#include "cli/note.h"
#include "core/names.h"

#include <algorithm>
#include <set>

namespace {

// In front of a name that has words before its first letter from A to Z.
constexpr std::string_view k_first_word = "note_";

bool can_stand(std::string_view character, bool linkable) {
    if (character == " ") {
        return true;
    }
    size_t at = 0;
    return linkable ? next_link_word(character, &at) == character
                    : static_cast<uint8_t>(character[0]) >= ' ' && character != "\x7F";
}

// What cannot stand in a name becomes '_', together with the blanks around it.
std::string with_signs_replaced(std::string_view wanted, bool linkable) {
    std::string name;
    bool replaced = false;
    for (size_t at = 0; at < wanted.size();) {
        const size_t from = at;
        next_character(wanted, &at);
        const std::string_view character = wanted.substr(from, at - from);
        if (!can_stand(character, linkable)) {
            name.erase(name.find_last_not_of(" _") + 1);
            replaced = true;
        } else if (!replaced || character.find_first_of(" _") == std::string_view::npos) {
            name += replaced && !name.empty() ? "_" : "";
            name += character;
            replaced = false;
        }
    }
    return name;
}

// At most so many bytes, and no character in part.
std::string cut(const std::string &name, size_t most) {
    size_t end = 0;
    for (size_t at = 0; at <= most && end < name.size();) {
        end = at;
        if (at < name.size()) {
            next_character(name, &at);
        }
    }
    return name.substr(0, end);
}

// Words in front of the first letter are kept, signs and blanks are not.
std::string with_letter_first(const std::string &name) {
    const auto start = static_cast<size_t>(cellname_start(name.c_str()) - name.c_str());
    const bool words = std::any_of(name.begin(), name.begin() + static_cast<ptrdiff_t>(start),
                                   [](char ch) { return is_digit(ch) || (ch & 0x80) != 0; });
    const size_t first = std::min(name.find_first_not_of(" _"), name.size());
    return words || start == name.size() ? std::string(k_first_word) + name.substr(first)
                                         : name.substr(start);
}

bool is_cells(const std::string &name, bool linkable) {
    return is_good_name(name) && (!linkable || can_be_linked(name));
}

bool take_name(const std::string &name, std::set<std::string> *taken) {
    return taken->insert(folded_name(name)).second;
}

std::string free_name(const std::string &wanted, bool linkable, std::set<std::string> *taken) {
    const std::string name = cellname_near(wanted, linkable);
    std::string other = name;
    for (uint32_t number = 2; !take_name(other, taken); ++number) {
        const std::string end = "_" + std::to_string(number);
        other = cut(name, k_cellname_max - end.size()) + end;
    }
    return other;
}

Source *find_wanted(Sources *sources, std::string_view stem) {
    const auto found = std::find_if(sources->begin(), sources->end(), [stem](const Source &source) {
        return !source.named && source.path.find('/') == std::string::npos &&
               compare_names(source.wanted, stem) == 0;
    });
    return found == sources->end() ? nullptr : &*found;
}

// True when one became it that is called otherwise.
bool choose_home(Sources *sources) {
    const bool has_home = std::any_of(sources->begin(), sources->end(), [](const Source &source) {
        return compare_names(source.wanted, "home") == 0;
    });
    Source *home = has_home ? nullptr : find_wanted(sources, "index");
    if (!has_home && home == nullptr) {
        home = find_wanted(sources, "README");
    }
    if (home != nullptr) {
        home->name = "home";
    }
    return home != nullptr;
}

// Takes the names that cells can have, of those that have none yet.
void keep_names(Sources *sources, bool named, bool linkable, std::set<std::string> *taken) {
    for (Source &source : *sources) {
        const bool good = named || is_cells(source.wanted, linkable);
        if (source.named == named && source.name.empty() && good &&
            take_name(source.wanted, taken)) {
            source.name = source.wanted;
        }
    }
}

}  // namespace

std::string cellname_near(std::string_view wanted, bool linkable) {
    return cut(with_letter_first(with_signs_replaced(wanted, linkable)), k_cellname_max);
}

void name_sources(Sources *sources, bool linkable) {
    std::set<std::string> taken;
    if (choose_home(sources)) {
        take_name("home", &taken);
    }
    keep_names(sources, true, linkable, &taken);
    keep_names(sources, false, linkable, &taken);
    for (Source &source : *sources) {
        if (source.name.empty()) {
            source.name = free_name(source.wanted, linkable, &taken);
        }
    }
}
