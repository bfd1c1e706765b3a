// Numbers as text, against fixed expectations and against this machine's C library.
#include "tests/engine/engine_test.h"

#include "core/numbers.h"

#include <cfloat>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace {

std::string formatted(double value, uint8_t kind, uint8_t digits) {
    char buffer[k_number_text_max + 1] = {0};
    NumberFormat format = {kind, digits, 24, '.'};
    uint32_t length = number_format(buffer, value, &format);
    EXPECT_EQ(length, strlen(buffer));
    return buffer;
}

}  // namespace

TEST(Numbers, Integers) {
    struct Row {
        const char *text;
        int result;
        int16_t value;
    };
    for (Row row : {Row{"0", 0, 0}, Row{"  -32768x", 0, -32768}, Row{"+32767", 0, 32767},
                    Row{"32768", -1, 7}, Row{"-32769", -1, 7}, Row{"40000", -1, 7},
                    Row{"99999999999999999999", -1, 7}, Row{"4294967297", -1, 7}, Row{"abc", 0, 0},
                    Row{"", 0, 0}, Row{"\t\n 12 34", 0, 12}, Row{"- 5", 0, 0}}) {
        int16_t value = 7;
        EXPECT_EQ(int16_parse(row.text, &value), row.result) << row.text;
        EXPECT_EQ(value, row.value) << row.text;
    }
    char buffer[8];
    for (int32_t value : {0, 7, -1, 32767, -32768}) {
        int16_format(value, buffer);
        EXPECT_EQ(buffer, std::to_string(value));
    }
    int16_format(65535, buffer);
    EXPECT_STREQ(buffer, "-1");
}

TEST(Numbers, Parse) {
    struct Row {
        const char *text;
        double value;
    };
    for (Row row :
         {Row{"3.5kg", 3.5}, Row{"abc", 0}, Row{"", 0}, Row{" -.5", -0.5}, Row{"5.", 5},
          Row{".", 0}, Row{"1e2", 100}, Row{"1e", 1}, Row{"1e+", 1}, Row{"+2E-1x", 0.2},
          Row{"0x10", 0}, Row{"nan", 0}, Row{"inf", 0}, Row{"-infinity", 0}, Row{"1e999", DBL_MAX},
          Row{"-1e999", -DBL_MAX}, Row{"1e-999", 0}, Row{"1,5", 1}, Row{"--1", 0}}) {
        double value = 99;
        EXPECT_EQ(number_parse(row.text, &value), 0);
        EXPECT_EQ(value, row.value) << row.text;
    }
}

TEST(Numbers, Format) {
    struct Row {
        double value;
        uint8_t kind, digits;
        const char *text;
    };
    for (Row row : {Row{2, 0, 3, "2.000"}, Row{0.5, 0, 0, "0"}, Row{1.5, 0, 0, "2"},
                    Row{-0.0, 0, 1, "-0.0"}, Row{1, 0, 30, "1.000000000000000000"},
                    Row{99.995, 2, 4, "100"}, Row{1e5, 2, 5, "1e+05"}, Row{12345, 1, 2, "1.23e+04"},
                    Row{1e-300, 1, 0, "1e-300"}, Row{0, 2, 0, "0"}, Row{1e-5, 2, 3, "1e-05"},
                    // too long in fixed form, and in exponent form with all the digits
                    Row{1e30, 0, 2, "1.00e+30"}, Row{-1.0 / 3, 0, 18, "-0.333333333333333315"},
                    Row{-1e300, 1, 18, "-1.0000000000000001e+300"}}) {
        EXPECT_EQ(formatted(row.value, row.kind, row.digits), row.text);
    }
    char buffer[k_number_text_max + 1] = "kept";
    NumberFormat odd = {3, 2, 24, '.'};
    EXPECT_EQ(number_format(buffer, 1.0, &odd), 4U);
    EXPECT_STREQ(buffer, "kept");
}

TEST(Numbers, FormatAgreesWithTheCLibrary) {
    std::mt19937_64 random(20);
    for (int i = 0; i < 60000; ++i) {
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

TEST(Numbers, TheFormatInForceIsCorrectedFirst) {
    NumberFormat format = {9, 16, 25, 200};
    number_format_set(&format);
    for (const NumberFormat *f :
         {static_cast<const NumberFormat *>(&format), number_format_in_force()}) {
        EXPECT_EQ(f->kind, 2);
        EXPECT_EQ(f->digits, 2);
        EXPECT_EQ(f->width, 24);
        EXPECT_EQ(f->point, 200);
    }
    format = {0, 15, 0, '.'};
    number_format_set(&format);
    EXPECT_EQ(number_format_in_force()->digits, 15);
    double copy = 0;
    EXPECT_EQ(number_copy(&copy, 2.5), 0);
    EXPECT_EQ(number_copy(&copy, std::numeric_limits<double>::infinity()), -1);
    EXPECT_TRUE(std::isinf(copy));
}
