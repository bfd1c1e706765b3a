#include "cli/link_words.h"

#include "core/names.h"
#include "pane/characters.h"

#include <algorithm>

namespace {

bool is_plain_word_byte(char ch) {
    return is_letter(ch) || is_digit(ch) || ch == '_';
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

// Where the character behind `at` begins when it belongs to a word, else `at`.
size_t step_in_word(const Gap &gap, std::string_view text, size_t at) {
    if (static_cast<signed char>(text[at]) >= 0) {
        return is_plain_word_byte(text[at]) ? at + 1 : at;
    }
    const auto position = static_cast<uint32_t>(at);
    return class_at(&gap, position) == CharacterClass::word ? position_after(&gap, position) : at;
}

size_t end_of_word(const Gap &gap, std::string_view text, size_t at) {
    while (at < text.size()) {
        const size_t next = step_in_word(gap, text, at);
        if (next == at) {
            break;
        }
        at = next;
    }
    return at;
}

}  // namespace

std::string_view next_link_word(std::string_view text, size_t *at) {
    const Gap gap = gap_over(text);
    size_t from = *at;
    while (from < text.size()) {
        const size_t end = end_of_word(gap, text, from);
        if (end > from) {
            *at = end;
            return text.substr(from, end - from);
        }
        from = static_cast<signed char>(text[from]) >= 0
                   ? from + 1
                   : position_after(&gap, static_cast<uint32_t>(from));
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
