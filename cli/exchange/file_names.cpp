#include "cli/exchange/file_names.h"

#include "cli/link_words.h"
#include "core/names.h"
#include "pane/characters.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>

namespace {

// Letters beyond ASCII that may stand in a file's name: whole scripts where each letter is one code
// point, and its small one is so much further; for `pairs` they take turns, the capital first.
struct Letters {
    uint32_t first;
    uint32_t last;
    uint32_t further;
    bool pairs;
};
constexpr Letters k_letters[] = {
    {0xC0, 0xD6, 32, false},    {0xD8, 0xDE, 32, false},    {0xDF, 0xF6, 0, false},
    {0xF8, 0xFE, 0, false},     {0x100, 0x12F, 0, true},    {0x132, 0x137, 0, true},
    {0x139, 0x148, 1, true},    {0x14A, 0x177, 0, true},    {0x179, 0x17E, 1, true},
    {0x410, 0x42F, 32, false},  {0x430, 0x44F, 0, false},   {0x3041, 0x3096, 0, false},
    {0x30A1, 0x30FA, 0, false}, {0x4E00, 0x9FFF, 0, false}, {0xAC00, 0xD7A3, 0, false}};

constexpr std::string_view k_devices[] = {"con", "prn", "aux", "nul", "conin", "conout"};

constexpr size_t k_stem_max = 60;  // bytes; a name has fewer, unless another program made the web

const Letters *letters_of(uint32_t code) {
    const Letters *row =
        std::find_if(std::begin(k_letters), std::end(k_letters), [code](const Letters &letters) {
            return code >= letters.first && code <= letters.last;
        });
    return row == std::end(k_letters) ? nullptr : row;
}

bool is_plain(uint32_t code) {
    return code < 0x80 && (is_letter(static_cast<char>(code)) ||
                           is_digit(static_cast<char>(code)) || code == ' ' || code == '_');
}

uint32_t small_letter(uint32_t code) {
    if (code >= 'A' && code <= 'Z') {
        return code + 32;
    }
    const Letters *letters = letters_of(code);
    if (letters == nullptr) {
        return code;
    }
    // The small one of a pair is odd, or even where the pairs begin with an odd one.
    return letters->pairs ? (letters->further == 0 ? code | 1 : (code + 1) & ~1U)
                          : code + letters->further;
}

// Devices go by their names and a digit too, whatever comes behind a point.
bool is_device(const std::string &stem) {
    std::string name = caseless_stem(stem);
    name.erase(name.find_last_not_of(' ') + 1);
    const bool port = name.size() == 4 && (name.starts_with("com") || name.starts_with("lpt")) &&
                      is_digit(name[3]);
    return port ||
           std::find(std::begin(k_devices), std::end(k_devices), name) != std::end(k_devices);
}

std::string stem_of(std::string_view name) {
    std::string stem;
    for (size_t at = 0; at < name.size() && stem.size() < k_stem_max - 4;) {
        const size_t from = at;
        const uint32_t code = next_character(name, &at);
        const bool stays = is_plain(code) || letters_of(code) != nullptr;
        stem += stays ? name.substr(from, at - from) : "_";
    }
    return is_device(stem) ? stem + "_" : stem;
}

// The stem, or with the first number that makes it another one than those.
std::string free_stem(const std::string &stem, std::set<std::string> *taken) {
    std::string other = stem;
    for (uint32_t number = 2; !taken->insert(caseless_stem(other)).second; ++number) {
        other = stem + "-" + std::to_string(number);
    }
    return other;
}

}  // namespace

std::string caseless_stem(const std::string &stem) {
    std::string small;
    for (size_t at = 0; at < stem.size();) {
        const size_t from = at;
        const uint32_t code = next_character(stem, &at);
        char bytes[4] = {stem[from]};
        const uint32_t size =
            code == k_no_character ? 1 : encode_character(bytes, small_letter(code));
        small.append(bytes, size);
    }
    return small;
}

bool stem_is_name(const std::string &stem, const std::string &name) {
    return stem == name && is_good_name(name) && can_be_linked(name);
}

// Notes that keep their names come first, so that nobody else's change moves them.
std::vector<std::string> file_stems(const Notes &notes) {
    std::vector<std::string> stems(notes.size());
    std::set<std::string> taken;
    for (const bool kept : {true, false}) {
        for (size_t i = 0; i < notes.size(); ++i) {
            const std::string stem = stem_of(notes[i].name);
            if (stem_is_name(stem, notes[i].name) == kept) {
                stems[i] = free_stem(stem, &taken);
            }
        }
    }
    return stems;
}
