#include "pane/words.h"

#include "pane/characters.h"

namespace {

uint32_t skip_forward(const Gap *text, uint32_t position, CharacterClass kind) {
    while (position < text->length && class_at(text, position) == kind) {
        position += character_at(text, position).size;
    }
    return position;
}

uint32_t skip_back(const Gap *text, uint32_t position, CharacterClass kind) {
    while (position > 0 && class_before(text, position) == kind) {
        position -= character_before(text, position).size;
    }
    return position;
}

}  // namespace

// A position within a character is in no word, and comes out of it.
uint32_t word_end(const Gap *text, uint32_t position, bool only_words) {
    const bool by_text = !only_words && position < text->length;
    const CharacterClass kind = by_text ? class_at(text, position) : CharacterClass::word;
    return position_outside(text, skip_forward(text, position, kind), true);
}

uint32_t word_start(const Gap *text, uint32_t position, bool only_words) {
    const bool by_text = !only_words && position > 0;
    const CharacterClass kind = by_text ? class_before(text, position) : CharacterClass::word;
    return position_outside(text, skip_back(text, position, kind), false);
}

uint32_t next_word(const Gap *text, uint32_t position) {
    if (position < text->length) {
        position = skip_forward(text, position, class_at(text, position));
    }
    return skip_forward(text, position, CharacterClass::space);
}

uint32_t previous_word(const Gap *text, uint32_t position) {
    position = skip_back(text, position, CharacterClass::space);
    return position > 0 ? skip_back(text, position, class_before(text, position)) : 0;
}
