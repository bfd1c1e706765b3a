// Numbers as text, against this machine's C library; what is read is compared in tests/fuzz.
#include "tests/engine/engine_test.h"
#include "tests/engine/report_model.h"

#include "core/numbers.h"

#include <cmath>
#include <cstring>
#include <random>

static std::string formatted(double value, uint8_t kind, uint8_t digits) {
    char buffer[k_number_text_max + 2] = {0};
    NumberFormat format = {kind, digits, 24, '.'};
    uint32_t length = number_format(buffer, value, &format);
    EXPECT_EQ(length, strlen(buffer));
    EXPECT_EQ(buffer[length + 1], 0) << "nothing goes behind the end";
    return buffer;
}

TEST(Numbers, Integers) {
    for (int value : {0, 7, -1, 32767, -32768}) {
        char buffer[8];
        int16_format(value + 65536, buffer);
        EXPECT_EQ(buffer, std::to_string(value));
        int16_t read = 0;
        EXPECT_EQ(int16_parse(buffer, &read), 0);
        EXPECT_EQ(read, value);
    }
}

TEST(Numbers, TheFormatInForceIsCorrectedFirst) {
    for (auto [odd, even] : {std::pair(NumberFormat{9, 16, 25, 200}, NumberFormat{2, 2, 24, 200}),
                             std::pair(NumberFormat{0, 15, 0, '.'}, NumberFormat{0, 15, 0, '.'})}) {
        number_format_set(&odd);
        EXPECT_EQ(memcmp(&odd, &even, sizeof odd), 0);
        EXPECT_EQ(memcmp(number_format_in_force(), &even, sizeof even), 0);
    }
}

TEST(Numbers, Format) {
    EXPECT_EQ(formatted(1, 0, 30), "1.000000000000000000");
    EXPECT_EQ(formatted(HUGE_VAL, 0, 2) + formatted(-HUGE_VAL, 1, 2) + formatted(NAN, 2, 2),
              "inf-infnan");
    char kept[k_number_text_max + 1] = "kept";
    const NumberFormat unknown = {3, 2, 24, '.'};
    EXPECT_EQ(number_format(kept, 1, &unknown), 4U);
    EXPECT_STREQ(kept, "kept");
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
        if (std::isfinite(value)) {
            ASSERT_EQ(formatted(value, kind, digits), model_number_text(value, kind, digits));
        }
    }
}
