// Which characters beyond ASCII are of words, spaces or signs, as Unicode's general categories have
// it: letters, marks and numbers make words.
#pragma once

#include <cstdint>

enum class CharacterClass : uint8_t { space, newline, word, punctuation };

// Code points that are not assigned are as the ones before them.
CharacterClass class_from_runs(uint32_t code);
