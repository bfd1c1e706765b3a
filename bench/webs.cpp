#include "bench/webs.h"

#include <set>

namespace {

constexpr uint32_t k_many_cells = 2400;
constexpr uint32_t k_short_least = 64;  // characters; up to 71 take two blocks
constexpr uint32_t k_short_most = 71;

constexpr uint32_t k_numbered_cells = 256;
constexpr uint32_t k_long_text = 1050;
constexpr uint32_t k_paragraph = 350;
constexpr uint32_t k_links_least = 17;  // in each text; three of sixteen have one more

constexpr uint32_t k_vocabulary = 600;
constexpr uint32_t k_longest_piece = 20;  // characters of a word with what follows it, at most
constexpr uint32_t k_usual_piece = 7;

// SplitMix64: the standard library's distributions differ from one library to the next.
struct Random {
    uint64_t state;
};

uint32_t below(Random *random, uint32_t limit) {
    random->state += 0x9E3779B97F4A7C15;
    uint64_t z = random->state;
    z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9;
    z = (z ^ z >> 27) * 0x94D049BB133111EB;
    return static_cast<uint32_t>((z ^ z >> 31) % limit);
}

std::string make_word(Random *random, uint32_t syllables) {
    static constexpr char k_consonants[] = "bcdfghjklmnprstvw";
    static constexpr char k_vowels[] = "aeiou";
    static constexpr char k_ends[] = "nrst";
    std::string word;
    for (uint32_t i = 0; i < syllables; ++i) {
        word += k_consonants[below(random, sizeof k_consonants - 1)];
        word += k_vowels[below(random, sizeof k_vowels - 1)];
        if (below(random, 3) == 0) {
            word += k_ends[below(random, sizeof k_ends - 1)];
        }
    }
    return word;
}

// What a web is written with: words that name no cell, and the cells' names.
struct Language {
    Random random;
    std::vector<std::string> words;
    std::vector<std::string> names;
};

Language make_language(uint64_t seed, uint32_t cells) {
    Language language = {{seed}, {}, {"home"}};
    std::set<std::string> used = {"home"};
    while (language.words.size() < k_vocabulary) {
        std::string word = make_word(&language.random, 1 + below(&language.random, 3));
        used.insert(word);
        language.words.push_back(word);
    }
    while (language.names.size() < cells) {
        std::string name = make_word(&language.random, 3);
        if (below(&language.random, 4) == 0) {
            name += "_" + make_word(&language.random, 2);
        }
        if (used.insert(name).second) {
            language.names.push_back(name);
        }
    }
    return language;
}

// A text in the making.
struct Writing {
    std::string text;
    uint32_t line;  // where the paragraph began
    bool sentence_begins;
};

// A word that names no cell; now and then a figure or one of the characters that a file escapes.
std::string make_piece(Language *language, bool sentence_begins) {
    uint32_t kind = below(&language->random, 240);
    if (kind < 2) {
        return "&";
    }
    if (kind == 2) {
        return "<";
    }
    if (kind < 8) {
        return std::to_string(below(&language->random, 1000));
    }
    std::string word = language->words[below(&language->random, k_vocabulary)];
    if (sentence_begins) {
        word[0] = static_cast<char>(word[0] - 'a' + 'A');
    }
    return word;
}

void add_piece(Writing *writing, Random *random, const std::string &piece) {
    writing->text += piece;
    writing->sentence_begins = below(random, 10) == 0;
    if (!writing->sentence_begins) {
        writing->text += below(random, 12) == 0 ? ", " : " ";
    } else if (writing->text.size() - writing->line < k_paragraph) {
        writing->text += ". ";
    } else {
        writing->text += ".\r\n";
        writing->line = static_cast<uint32_t>(writing->text.size());
    }
}

// Spreads the links over what is left of a text, and sees to it that all of them find room.
bool link_is_due(Random *random, uint32_t links, uint32_t left) {
    return links > 0 &&
           (left < (links + 1) * k_longest_piece || below(random, left) < links * k_usual_piece);
}

// A text of that length in which `links` cells are named.
std::string make_text(Language *language, uint32_t length, uint32_t links) {
    Random *random = &language->random;
    Writing writing = {"", 0, true};
    while (writing.text.size() < length) {
        if (link_is_due(random, links, length - static_cast<uint32_t>(writing.text.size()))) {
            auto count = static_cast<uint32_t>(language->names.size());
            add_piece(&writing, random, language->names[below(random, count)]);
            --links;
        } else {
            add_piece(&writing, random, make_piece(language, writing.sentence_begins));
        }
    }
    writing.text.resize(length);
    return writing.text;
}

}  // namespace

GeneratedWeb make_many_cells() {
    Language language = make_language(1, k_many_cells);
    GeneratedWeb web;
    for (const std::string &name : language.names) {
        uint32_t length = k_short_least + below(&language.random, k_short_most - k_short_least + 1);
        web.push_back({name, make_text(&language, length, 0)});
    }
    return web;
}

GeneratedWeb make_long_texts() {
    Language language = make_language(2, k_numbered_cells);
    GeneratedWeb web;
    for (uint32_t i = 0; i < k_numbered_cells; ++i) {
        uint32_t links = k_links_least + (i % 16 < 3 ? 1 : 0);
        web.push_back({language.names[i], make_text(&language, k_long_text, links)});
    }
    return web;
}
