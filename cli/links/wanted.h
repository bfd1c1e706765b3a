// Words that look as if they should name a cell, and name none.
#pragma once

#include "cli/links/link_table.h"

#include <string>
#include <vector>

struct WantedWord {
    std::string word;  // as it is spelled where it stands first
    std::vector<WordPlace> places;
};

// True for a word that could be a cell's name and has a '_' between others, or a capital behind a
// small letter.
bool looks_like_a_name(std::string_view word);

// Of a table that keeps such words: the most wanted first, then by name.
std::vector<WantedWord> wanted_words(const LinkTable &table);
