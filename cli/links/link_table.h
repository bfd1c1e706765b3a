// Which cells' texts name which, of the notes at hand: a word that names another cell is a link
// (cli/link_words.h). A cell's own name in its text leads nowhere and is none.
#pragma once

#include "cli/links/spans.h"
#include "cli/note.h"

// Of a word that may be a link: where it stands.
struct WordPlace {
    size_t cell;            // index of the note
    size_t line;            // of the note's text, from 1
    std::string_view text;  // the line, a piece of the note's text
    Span span;              // the word in it
};

struct Link {
    WordPlace place;
    size_t target;  // index of a note
};

std::string_view word_at(const WordPlace &place);

// All links, by the cells that they stand in and by place, and words that name no cell, the same
// way. Both point into the notes.
struct LinkTable {
    std::vector<Link> links;
    std::vector<WordPlace> unnamed;  // those that were to be kept
    size_t words;                    // of all texts
};

// `keeps` says which of the words that name no cell are kept: none without it.
LinkTable link_table(const Notes &notes, bool (*keeps)(std::string_view word) = nullptr);

// Links without their places: the cells that each cell's text names, in the notes' order, each
// once.
using Targets = std::vector<std::vector<size_t>>;
Targets link_targets(const Notes &notes);
Targets link_targets(const Notes &notes, const LinkTable &table);

// The same links the other way round.
Targets reversed(const Targets &targets);

// The index of a note of this name; notes.size() when there is none.
size_t note_index(const Notes &notes, const std::string &name);

// True for the cell that every web begins at and keeps.
bool is_home(const Note &note);
