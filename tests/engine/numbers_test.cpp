// Numbers as text, against fixed expectations and against this machine's C library.
#include "tests/engine/engine_test.h"

#include "core/numbers.h"

#include <cfloat>
#include <cmath>
#include <cstring>
#include <random>

static std::string formatted(double value, uint8_t kind, uint8_t digits) {
    char buffer[k_number_text_max + 1] = {0};
    NumberFormat format = {kind, digits, 24, '.'};
    uint32_t length = number_format(buffer, value, &format);
    EXPECT_EQ(length, strlen(buffer));
    return buffer;
}

TEST(Numbers, Integers) {
    for (auto [text, result, parsed] :
         {std::tuple("  -32768x", 0, -32768), std::tuple("+32767", 0, 32767),
          std::tuple("32768", -1, 7), std::tuple("-32769", -1, 7), std::tuple("4294967297", -1, 7),
          std::tuple("\t\n 12 34", 0, 12), std::tuple("- 5", 0, 0)}) {
        int16_t value = 7;
        EXPECT_EQ(int16_parse(text, &value), result) << text;
        EXPECT_EQ(value, parsed) << text;
        char buffer[8];
        int16_format(value, buffer);
        EXPECT_EQ(buffer, std::to_string(value));
    }
}

TEST(Numbers, Parse) {
    constexpr std::pair<const char *, double> rows[] = {
        {"3.5kg", 3.5},       {"", 0},         {" -.5", -0.5}, {"5.", 5},  {"1e2", 100},
        {"1e+", 1},           {"+2E-1x", 0.2}, {"0x10", 0},    {"nan", 0}, {"-infinity", 0},
        {"-1e999", -DBL_MAX}, {"1e-999", 0},   {"1,5", 1},     {"--1", 0}};
    for (auto [text, parsed] : rows) {
        double value = 99;
        number_parse(text, &value);
        EXPECT_EQ(value, parsed) << text;
    }
}

TEST(Numbers, Format) {
    EXPECT_EQ(formatted(1, 0, 30), "1.000000000000000000");
    EXPECT_EQ(formatted(1e30, 0, 2), "1.00e+30") << "too long in fixed form";
    EXPECT_EQ(formatted(-1e300, 1, 18), "-1.0000000000000001e+300") << "in any form";
    std::mt19937_64 random(20);
    for (int i = 0; i < 30000; ++i) {
        uint64_t bits = random();
        double value;
        memcpy(&value, &bits, sizeof value);
        if (i % 2 != 0) {  // everyday magnitudes, many of them halfway cases
            value = static_cast<double>(static_cast<int64_t>(bits) >> 40) / 64;
        }
        uint8_t kind = static_cast<uint8_t>(random() % 3);
        uint8_t digits = static_cast<uint8_t>(random() % 19);
        char expected[400];
        const char *pattern = kind == 0 ? "%.*f" : kind == 1 ? "%.*e" : "%.*g";
        int length = snprintf(expected, sizeof expected, pattern, digits, value);
        if (std::isfinite(value) && length <= static_cast<int>(k_number_text_max)) {
            ASSERT_EQ(formatted(value, kind, digits), expected);
        } else {
            ASSERT_LE(formatted(value, kind, digits).size(), k_number_text_max);
        }
    }
}
