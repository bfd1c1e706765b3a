// Numbers as text, against this machine's C library; what is read is compared in tests/fuzz.
#include "tests/engine/engine_test.h"

#include "core/numbers.h"

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

TEST(Numbers, Format) {
    EXPECT_EQ(formatted(1, 0, 30), "1.000000000000000000");
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
