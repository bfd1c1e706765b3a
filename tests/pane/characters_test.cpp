// Steps, words and matches in texts of UTF-8, against models that take the text apart from its
// beginning.
#include "pane/characters.h"
#include "pane/find.h"
#include "pane/words.h"
#include "tests/pane/random_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

struct Unit {
    uint32_t start;
    uint32_t code;
    CharacterClass kind;
};

// One character as the standard's table of well-formed sequences has it.
uint32_t sequence_size(const std::string &text, size_t at) {
    static constexpr struct {
        uint8_t first, last, second_least, second_most, size;
    } k_rows[] = {{0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
                  {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3},
                  {0xEE, 0xEF, 0x80, 0xBF, 3}, {0xF0, 0xF0, 0x90, 0xBF, 4},
                  {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4}};
    const auto byte = [&](size_t i) { return i < text.size() ? static_cast<uint8_t>(text[i]) : 0; };
    for (const auto &row : k_rows) {
        if (byte(at) >= row.first && byte(at) <= row.last) {
            bool whole = byte(at + 1) >= row.second_least && byte(at + 1) <= row.second_most;
            for (size_t i = 2; i < row.size; ++i) {
                whole = whole && (byte(at + i) & 0xC0) == 0x80;
            }
            return whole ? row.size : 1;
        }
    }
    return 1;
}

std::vector<Unit> units_of(const std::string &text) {
    std::vector<Unit> units;
    for (uint32_t at = 0; at < text.size();) {
        const uint32_t size = sequence_size(text, at);
        const uint8_t lead = static_cast<uint8_t>(text[at]);
        uint32_t code = size > 1 ? lead & (0x7FU >> size) : lead < 0x80 ? lead : k_bad_byte | lead;
        for (uint32_t i = 1; i < size; ++i) {
            code = code << 6 | (static_cast<uint8_t>(text[at + i]) & 0x3FU);
        }
        units.push_back({at, code, class_of(code)});
        at += size;
    }
    units.push_back({static_cast<uint32_t>(text.size()), 0, CharacterClass::newline});
    return units;
}

// The text in a gap buffer whose hole is anywhere.
Gap gap_of(const std::string &text, Random *random) {
    Gap gap;
    gap_init(&gap, 1);
    const uint32_t length = static_cast<uint32_t>(text.size());
    EXPECT_TRUE(gap_reserve(&gap, length + 1));
    std::copy(text.begin(), text.end(), gap_open(&gap, 0, length));
    gap_move_hole(&gap, (*random)(text.size() + 1));
    return gap;
}

void for_random_texts(void (*check)(const std::string &, const Gap *, Random *)) {
    Random random = {};
    for (uint32_t i = 0; i < 600; ++i) {
        const std::string text = random_text(&random, random(30));
        Gap gap = gap_of(text, &random);
        check(text, &gap, &random);
        gap_free(&gap);
        ASSERT_FALSE(testing::Test::HasFailure()) << testing::PrintToString(text);
    }
}

// Where a caret may stand.
std::vector<uint32_t> stops_of(const std::string &text) {
    std::vector<uint32_t> stops;
    for (const Unit &unit : units_of(text)) {
        const uint32_t at = unit.start;
        if (at == 0 || text[at - 1] != '\r' || text[at] != '\n') {
            stops.push_back(at);
        }
    }
    return stops;
}

TEST(Characters, StepsStopInFrontOfEachCharacterAndLineEnd) {
    for_random_texts([](const std::string &text, const Gap *gap, Random *) {
        const std::vector<uint32_t> stops = stops_of(text);
        for (uint32_t at = 0; at <= text.size(); ++at) {
            const auto on = std::lower_bound(stops.begin(), stops.end(), at);
            const auto behind = std::upper_bound(stops.begin(), stops.end(), at);
            const uint32_t before = on == stops.begin() ? 0 : *(on - 1);
            EXPECT_EQ(position_outside(gap, at, true), *on) << at;
            EXPECT_EQ(position_outside(gap, at, false), *(behind - 1)) << at;
            EXPECT_EQ(position_after(gap, at), behind == stops.end() ? *on : *behind) << at;
            EXPECT_EQ(position_before(gap, at), before) << at;
        }
    });
}

TEST(Characters, AreReadFromEitherSideAndWrittenBack) {
    for_random_texts([](const std::string &text, const Gap *gap, Random *) {
        const std::vector<Unit> units = units_of(text);
        for (size_t i = 0; i + 1 < units.size(); ++i) {
            const uint32_t size = units[i + 1].start - units[i].start;
            const Character here = character_at(gap, units[i].start);
            const Character there = character_before(gap, units[i + 1].start);
            EXPECT_TRUE(here.code == units[i].code && here.size == size) << units[i].start;
            EXPECT_TRUE(there.code == units[i].code && there.size == size) << units[i].start;
            char bytes[4] = {};
            if (here.code < k_bad_byte) {
                EXPECT_EQ(encode_character(bytes, here.code), size);
                EXPECT_EQ(text.compare(units[i].start, size, bytes, size), 0);
            }
        }
    });
}

TEST(Characters, Classes) {
    for (const uint32_t code : {0x61U, 0x5AU, 0x30U, 0x5FU, 0xE9U, 0x3B1U, 0x4E2DU, 0x301U}) {
        EXPECT_EQ(class_of(code), CharacterClass::word) << code;
    }
    for (const uint32_t code : {0x2EU, 0x2019U, 0x2014U, 0x1F600U, k_bad_byte | 0xC3}) {
        EXPECT_EQ(class_of(code), CharacterClass::punctuation) << code;
    }
    for (const uint32_t code : {0x20U, 0x09U, 0xA0U, 0x2003U, 0x3000U}) {
        EXPECT_EQ(class_of(code), CharacterClass::space) << code;
    }
}

// From a unit on, past those of a class.
size_t past(const std::vector<Unit> &units, size_t i, CharacterClass kind) {
    while (i + 1 < units.size() && units[i].kind == kind) {
        ++i;
    }
    return i;
}

size_t past_back(const std::vector<Unit> &units, size_t i, CharacterClass kind) {
    while (i > 0 && units[i - 1].kind == kind) {
        --i;
    }
    return i;
}

TEST(Words, AreRunsOfOneClass) {
    for_random_texts([](const std::string &text, const Gap *gap, Random *) {
        const std::vector<Unit> units = units_of(text);
        const std::vector<uint32_t> stops = stops_of(text);
        for (size_t i = 0; i < units.size(); ++i) {
            const uint32_t at = units[i].start;
            if (!std::binary_search(stops.begin(), stops.end(), at)) {
                continue;
            }
            const CharacterClass before = i > 0 ? units[i - 1].kind : CharacterClass::word;
            const size_t end = past(units, i, units[i].kind);
            const size_t blank = past_back(units, i, CharacterClass::space);
            const size_t start =
                blank > 0 ? past_back(units, blank, units[blank - 1].kind) : size_t{0};
            EXPECT_EQ(word_end(gap, at, true), units[past(units, i, CharacterClass::word)].start);
            EXPECT_EQ(word_end(gap, at, false), units[end].start);
            EXPECT_EQ(word_start(gap, at, true),
                      units[past_back(units, i, CharacterClass::word)].start);
            EXPECT_EQ(word_start(gap, at, false), units[past_back(units, i, before)].start);
            EXPECT_EQ(next_word(gap, at), units[past(units, end, CharacterClass::space)].start);
            EXPECT_EQ(previous_word(gap, at), units[start].start);
        }
    });
}

uint32_t fold(uint32_t code) {
    const bool large = (code >= 'A' && code <= 'Z') || (code >= 0xC0 && code <= 0xDE);
    return large ? code + 0x20 : code;
}

// Whether the target stands at a unit, and ends at `to` or before it.
bool stands_at(const std::vector<Unit> &units, size_t i, const std::vector<Unit> &target,
               uint32_t to, bool folded) {
    for (size_t k = 0; k + 1 < target.size(); ++k, ++i) {
        const uint32_t a = target[k].code;
        if (i + 1 >= units.size() ||
            (folded ? fold(a) != fold(units[i].code) : a != units[i].code)) {
            return false;
        }
    }
    return units[i].start <= to;
}

void expect_found(const std::vector<Unit> &units, const Gap *gap, const std::string &wanted,
                  Random *random, bool folded) {
    const std::vector<Unit> target = units_of(wanted);
    const uint32_t a = units[(*random)(units.size())].start;
    const uint32_t b = units[(*random)(units.size())].start;
    const uint32_t from = std::min(a, b);
    const uint32_t to = std::max(a, b);
    std::vector<uint32_t> matches;
    for (size_t i = 0; i + 1 < units.size(); ++i) {
        if (units[i].start >= from && stands_at(units, i, target, to, folded)) {
            matches.push_back(units[i].start);
        }
    }
    const Search search = {wanted.data(), static_cast<uint32_t>(wanted.size()),
                           folded ? fold : nullptr};
    Found first = {};
    Found last = {};
    EXPECT_EQ(find_forward(gap, search, from, to, &first), !matches.empty());
    EXPECT_EQ(find_back(gap, search, to, from, &last), !matches.empty());
    if (!matches.empty()) {
        EXPECT_EQ(first.start, matches.front());
        EXPECT_EQ(last.start, matches.back());
        EXPECT_EQ(last.end - last.start, wanted.size());  // folding here keeps the length
    }
}

TEST(Find, FirstAndLastMatchWithinItsBounds) {
    for_random_texts([](const std::string &text, const Gap *gap, Random *random) {
        const std::vector<Unit> units = units_of(text);
        for (const char *wanted : {"a", "b ", "WORD", "word", "ab", "\r\n", "\xC3\xA9", "\xC3\x89",
                                   "a\xC3\xA9", "\xC3", "\xF0\x9F\x98\x80"}) {
            expect_found(units, gap, wanted, random, false);
            expect_found(units, gap, wanted, random, true);
        }
    });
}

// As Scintilla has it: wherever it is looked for.
TEST(Find, AnEmptyTextIsWhereTheSearchBegins) {
    char bytes[] = "a";
    const Gap text = {bytes, 1, 1, 1, 1};
    for (const uint32_t from : {0U, 1U}) {
        for (const auto find : {find_forward, find_back}) {
            Found found = {9, 9};
            ASSERT_TRUE(find(&text, {"", 0, nullptr}, from, 1 - from, &found)) << from;
            ASSERT_EQ(found.start, from);
            ASSERT_EQ(found.end, from);
        }
    }
}

}  // namespace
