#include "cli/link_words.h"

#include "core/names.h"
#include "pane/characters.h"

#include <algorithm>
#include <array>

namespace {

constexpr auto k_plain_word_bytes = [] {
    std::array<bool, 256> bytes = {};
    for (const char ch : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                          "abcdefghijklmnopqrstuvwxyz0123456789_")) {
        bytes[static_cast<uint8_t>(ch)] = true;
    }
    return bytes;
}();

bool is_plain(char ch) {
    return static_cast<signed char>(ch) >= 0;
}

bool is_plain_word_byte(char ch) {
    return k_plain_word_bytes[static_cast<uint8_t>(ch)];
}

// The text as the panes' functions take it; nothing is copied and nothing written.
Gap gap_over(std::string_view text) {
    const auto length = static_cast<uint32_t>(text.size());
    Gap gap = {};
    gap.memory = const_cast<char *>(text.data());
    gap.length = length;
    gap.hole = length;
    gap.capacity = length;
    gap.width = 1;
    return gap;
}

// Where the character that stands there ends when it belongs to a word, else `at`. It is no plain
// one.
size_t step_in_word(std::string_view text, size_t at) {
    const Gap gap = gap_over(text);
    const auto position = static_cast<uint32_t>(at);
    return class_at(&gap, position) == CharacterClass::word ? position_after(&gap, position) : at;
}

size_t step_over(std::string_view text, size_t at) {
    const Gap gap = gap_over(text);
    return position_after(&gap, static_cast<uint32_t>(at));
}

size_t end_of_plain_word(std::string_view text, size_t at) {
    while (at < text.size() && is_plain_word_byte(text[at])) {
        ++at;
    }
    return at;
}

// Where the word that stands there ends; `at` when none does.
size_t end_of_word(std::string_view text, size_t at) {
    while (true) {
        at = end_of_plain_word(text, at);
        const size_t next = at < text.size() && !is_plain(text[at]) ? step_in_word(text, at) : at;
        if (next == at) {
            return at;
        }
        at = next;
    }
}

}  // namespace

std::string_view next_link_word(std::string_view text, size_t *at) {
    size_t from = *at;
    while (from < text.size()) {
        const size_t end = end_of_word(text, from);
        if (end > from) {
            *at = end;
            return text.substr(from, end - from);
        }
        from = is_plain(text[from]) ? from + 1 : step_over(text, from);
    }
    *at = text.size();
    return {};
}

std::string link_word_of(std::string_view name) {
    std::string word(name);
    std::replace(word.begin(), word.end(), ' ', '_');
    return word;
}

bool can_be_linked(std::string_view name) {
    const std::string word = link_word_of(name);
    size_t at = 0;
    return !word.empty() && is_letter(word[0]) && next_link_word(word, &at).size() == word.size();
}

uint32_t next_character(std::string_view text, size_t *at) {
    const Gap gap = gap_over(text);
    const Character character = character_at(&gap, static_cast<uint32_t>(*at));
    *at += character.size;
    return (character.code & k_bad_byte) != 0 ? k_no_character : character.code;
}
