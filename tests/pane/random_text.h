// Texts that the tests of the component's core make up.
#pragma once

#include <cstdint>
#include <iterator>
#include <random>
#include <string>

struct Random {
    std::mt19937 engine;

    // Below `limit`, which is not 0.
    uint32_t operator()(size_t limit) { return static_cast<uint32_t>(engine() % limit); }
};

// Words, blanks, line ends of every kind, characters of each length in UTF-8, and parts of them.
inline std::string random_text(Random *random, uint32_t pieces) {
    static constexpr const char *k_pieces[] = {"a",
                                               "b ",
                                               "Word",
                                               "x_9",
                                               "  ",
                                               ".",
                                               "\t",
                                               "\n",
                                               "\r",
                                               "\r\n",
                                               "\r\n\r\n",
                                               "\xC3\xA9",
                                               "\xA9",
                                               "\xC3\x89",
                                               "\xC3",
                                               "\xE4\xB8\xAD",
                                               "\xE4\xB8",
                                               "\xC2\xA0",
                                               "\xE2\x80\x94",
                                               "\xF0\x9F\x98\x80",
                                               "\xED\xA0\x80",
                                               "\xC0\xAF"};
    std::string text;
    while (pieces-- > 0) {
        text += k_pieces[(*random)(std::size(k_pieces))];
    }
    return text;
}
