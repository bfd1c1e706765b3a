// Characters, words, searching and breaking lines.
#include "pane/characters.h"
#include "pane/find.h"
#include "pane/words.h"
#include "pane/wrap.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

// A text with its hole in a given place.
struct Text {
    Gap gap = {};

    explicit Text(const std::string &bytes, size_t hole = 0) {
        gap_init(&gap, 1);
        EXPECT_TRUE(gap_reserve(&gap, static_cast<uint32_t>(bytes.size())));
        memcpy(gap_open(&gap, 0, static_cast<uint32_t>(bytes.size())), bytes.data(), bytes.size());
        gap_move_hole(&gap, static_cast<uint32_t>(hole));
    }
    ~Text() { gap_free(&gap); }
    Text(const Text &) = delete;
    Text &operator=(const Text &) = delete;
};

std::string steps(const std::string &bytes, bool forward) {
    std::string taken;
    for (size_t hole = 0; hole <= bytes.size(); ++hole) {
        const Text text(bytes, hole);
        std::string one;
        uint32_t at = forward ? 0 : text.gap.length;
        while (forward ? at < text.gap.length : at > 0) {
            const uint32_t next =
                forward ? position_after(&text.gap, at) : position_before(&text.gap, at);
            one += static_cast<char>('0' + (next > at ? next - at : at - next));
            at = next;
        }
        EXPECT_TRUE(hole == 0 || one == taken) << bytes << " with the hole at " << hole;
        taken = one;
    }
    return taken;
}

TEST(Characters, StepsAreWholeCharactersAndLineEnds) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"aé€\xF0\x9F\x98\x80z", "12341"},
        {"a\r\nb\r\r\n\n", "121121"},
        {"\xFF\x80q", "111"},          // no character begins so
        {"\xE2\x82q", "111"},          // too short
        {"\xC0\xAF", "11"},            // longer than need be
        {"\xED\xA0\x80", "111"},       // half of a pair
        {"\xF4\x90\x80\x80", "1111"},  // behind the last code point
        {"é\xA9", "21"},
    };
    for (const auto &[bytes, sizes] : rows) {
        EXPECT_EQ(steps(bytes, true), sizes) << bytes;
        EXPECT_EQ(steps(bytes, false), std::string(sizes.rbegin(), sizes.rend())) << bytes;
    }
    char encoded[5] = {};
    for (const uint32_t code : {0x41U, 0xE9U, 0x20ACU, 0x1F600U}) {
        const uint32_t size = encode_character(encoded, code);
        const Text text(std::string(encoded, size));
        EXPECT_EQ(character_at(&text.gap, 0).code, code);
    }
}

TEST(Words, AreLettersDigitsAndUnderscoresOfAnyAlphabet) {
    const std::string bytes = "ab_1 été, “plan”\r\n\r\n日本.😀x  ";
    const Text text(bytes, 5);
    std::string forward;
    for (uint32_t at = 0; at < text.gap.length;) {
        at = next_word(&text.gap, at);
        forward += std::to_string(at) + " ";
    }
    EXPECT_EQ(forward, "5 10 12 15 19 22 26 32 37 40 ");
    std::string back;
    for (uint32_t at = text.gap.length; at > 0;) {
        at = previous_word(&text.gap, at);
        back += std::to_string(at) + " ";
    }
    EXPECT_EQ(back, "37 32 26 22 19 15 12 10 5 0 ");
    const struct {
        uint32_t at, start, end, any_start, any_end;
    } rows[] = {{2, 0, 4, 0, 4}, {4, 0, 4, 0, 5}, {5, 5, 10, 4, 10}, {12, 12, 12, 11, 15}};
    for (const auto &row : rows) {
        EXPECT_EQ(word_start(&text.gap, row.at, true), row.start) << row.at;
        EXPECT_EQ(word_end(&text.gap, row.at, true), row.end) << row.at;
        EXPECT_EQ(word_start(&text.gap, row.at, false), row.any_start) << row.at;
        EXPECT_EQ(word_end(&text.gap, row.at, false), row.any_end) << row.at;
    }
}

uint32_t fold(uint32_t code) {
    return code == 0xC9 ? 0xE9 : code >= 'A' && code <= 'Z' ? code | 0x20 : code;
}

TEST(Find, FirstAndLastMatchWithinARange) {
    const std::string bytes = "One ÉTÉ one été onerous";
    for (size_t hole = 0; hole <= bytes.size(); ++hole) {
        const Text text(bytes, hole);
        const struct {
            const char *target;
            bool any_case;
            uint32_t from, to;
            int found;
        } rows[] = {
            {"one", true, 0, 27, 0},   {"one", false, 0, 27, 10},  {"one", false, 11, 27, 20},
            {"été", true, 0, 27, 4},   {"été", false, 0, 27, 14},  {"one", false, 11, 22, -1},
            {"one", true, 27, 0, 20},  {"one", true, 22, 0, 10},   {"One", false, 27, 1, -1},
            {"us", false, 20, 27, 25}, {"usx", false, 20, 27, -1},
        };
        for (const auto &row : rows) {
            const Search search = {row.target, static_cast<uint32_t>(strlen(row.target)),
                                   row.any_case ? fold : nullptr};
            Found found = {};
            const bool is_found = row.from <= row.to
                                      ? find_forward(&text.gap, search, row.from, row.to, &found)
                                      : find_back(&text.gap, search, row.from, row.to, &found);
            EXPECT_EQ(is_found ? static_cast<int>(found.start) : -1, row.found) << row.target;
        }
    }
}

// Every character is ten pixels wide, in style 2 twelve; a tab stops every forty.
std::string broken(const std::string &bytes, const std::string &styles, uint32_t room) {
    static uint16_t plain[128];
    static uint16_t bold[128];
    for (int i = 0; i < 128; ++i) {
        plain[i] = 10;
        bold[i] = 12;
    }
    Widths widths = {};
    for (uint32_t style = 0; style < k_measured_styles; ++style) {
        widths.ascii[style] = style == 2 ? bold : plain;
    }
    widths.other = [](void *, uint32_t style, uint32_t) { return style == 2 ? 12U : 10U; };
    widths.tab = 40;
    std::string style_bytes(bytes.size(), '\0');
    for (size_t i = 0; i < styles.size(); ++i) {
        style_bytes[i] = static_cast<char>(styles[i] - '0');
    }
    const Text text(bytes, bytes.size() / 2);
    const Text style(style_bytes);
    const LineRange line = {&text.gap, &style.gap, 0, text.gap.length};
    Breaks breaks = {};
    wrap_line(line, widths, room, &breaks);
    std::string parts;
    for (uint32_t i = 0; i < breaks.count; ++i) {
        const uint32_t from = breaks.parts[i].at;
        const uint32_t to = i + 1 < breaks.count ? breaks.parts[i + 1].at : text.gap.length;
        parts += (i > 0 ? "|" : "") + bytes.substr(from, to - from);
        EXPECT_EQ(part_of(&breaks, from), i);
        EXPECT_EQ(x_of(line, widths, {0, 0}, from), breaks.parts[i].x);
    }
    breaks_free(&breaks);
    return parts;
}

TEST(Wrap, BreaksBehindBlanksAndWhereTheStyleChanges) {
    const struct {
        const char *text;
        const char *styles;
        const char *parts;
    } rows[] = {
        {"", "", ""},
        {"one two three", "", "one two |three"},
        {"twelve chars", "", "twelve |chars"},
        {"abcdefghijkl", "", "abcdefghi|jkl"},  // nothing to break behind
        {"a   bbbbbbbbb", "", "a   |bbbbbbbbb"},
        {"aa bbbbbb  cc", "", "aa |bbbbbb  |cc"},  // blanks stay together
        {"aaaaaaaaa bb", "", "aaaaaaaaa| bb"},
        {"          bb", "", "         | bb"},
        {"(links)(links)", "022222002222", "(links)(|links)"},
        {"a\tb\tcc", "", "a\tb\t|cc"},
        {"éééé ééééééé", "", "éééé |ééééééé"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(broken(row.text, row.styles, 100), row.parts);
    }
    EXPECT_EQ(broken("abc", "", 1), "a|b|c") << "one character is taken at least";
}

}  // namespace
