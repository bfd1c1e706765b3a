// The handheld's compiler helpers against those of this compiler, over all pairs of operands at
// which arithmetic turns and some millions of random ones. (Checked without EXPECT, which takes
// longer than a division.)
#include "handheld/runtime/runtime.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

// Takes a recovery point with 1 to 8 in the registers that a called function keeps, spoils them and
// the stack pointer, and jumps back with a value. Returns what setjmp then gave, times 1000, and
// what the registers are together: 36 when they are as they were.
extern "C" int jump_and_look(int *context, int value);
asm(R"(
    .text
    .arm
    .type jump_and_look, %function
jump_and_look:
    push {r0, r1, r4-r11, lr}
    mov r4, #1
    mov r5, #2
    mov r6, #3
    mov r7, #4
    mov r8, #5
    mov r9, #6
    mov r10, #7
    mov r11, #8
    bl own_setjmp
    cmp r0, #0
    bne 1f
    ldr r0, [sp]
    ldr r1, [sp, #4]
    sub sp, sp, #64
    mov r4, r0
    mov r5, r0
    mov r6, r0
    mov r7, r0
    mov r8, r0
    mov r9, r0
    mov r10, r0
    mov r11, r0
    bl own_longjmp
1:  mov r1, #1000
    mul r2, r0, r1
    add r0, r4, r5
    add r0, r0, r6
    add r0, r0, r7
    add r0, r0, r8
    add r0, r0, r9
    add r0, r0, r10
    add r0, r0, r11
    add r0, r0, r2
    add sp, sp, #8
    pop {r4-r11, pc}
)");

namespace {

constexpr int k_random_pairs = 300000;
constexpr int k_random_long_pairs = 150000;  // each takes 64 steps

uint64_t next_random() {
    static uint64_t state = 88172645463325252U;
    state ^= state << 13;
    state ^= state >> 7;
    state ^= state << 17;
    return state;
}

// As many bits as it happens, so that quotients of all sizes come.
uint64_t random_bits(unsigned width) {
    return next_random() >> (64 - width + next_random() % width);
}

// Around each power of two, with either sign.
std::vector<uint64_t> turning_points(unsigned width) {
    std::vector<uint64_t> values;
    for (unsigned shift = 0; shift < width; ++shift) {
        for (uint64_t near = 0; near < 3; ++near) {
            const uint64_t value = (1ULL << shift) + near - 1;
            values.push_back(value);
            values.push_back(0 - value);
        }
    }
    return values;
}

// Calls check(n, d), which says whether all is well, for every pair.
template <typename Check> void for_pairs(unsigned width, int random_pairs, Check check) {
    const std::vector<uint64_t> values = turning_points(width);
    for (const uint64_t n : values) {
        for (const uint64_t d : values) {
            if (!check(n, d)) {
                FAIL() << std::hex << n << " " << d;
            }
        }
    }
    for (int i = 0; i < random_pairs; ++i) {
        const uint64_t n = random_bits(width);
        const uint64_t d = random_bits(width);
        if (!check(n, d) || !check(0 - n, d) || !check(n, 0 - d)) {
            FAIL() << std::hex << n << " " << d;
        }
    }
}

// What the compiler's own operators give, and where they give nothing what runtime.h promises.
template <typename Number> Number quotient(Number n, Number d) {
    if (d == 0) {
        return 0;
    }
    if (std::numeric_limits<Number>::is_signed && d == static_cast<Number>(-1)) {
        return static_cast<Number>(0 - static_cast<uint64_t>(n));
    }
    return n / d;
}

template <typename Number> Number rest(Number n, Number d) {
    if (d == 0) {
        return n;
    }
    return std::numeric_limits<Number>::is_signed && d == static_cast<Number>(-1) ? 0 : n % d;
}

double as_double(uint64_t bits) {
    return std::bit_cast<double>(bits);
}

// Zero, the least, the greatest that lacks a bit, the least that does not, around one, numbers that
// differ in one word alone, the greatest, infinity, and NaNs.
constexpr uint64_t k_notable_doubles[] = {
    0x0000000000000000, 0x0000000000000001, 0x000FFFFFFFFFFFFF, 0x0010000000000000,
    0x3FEFFFFFFFFFFFFF, 0x3FF0000000000000, 0x3FF0000000000001, 0x3FF00000FFFFFFFF,
    0x00000000FFFFFFFF, 0x7FEFFFFFFFFFFFFF, 0x7FF0000000000000, 0x7FF0000000000001,
    0x7FF8000000000000, 0x7FFFFFFFFFFFFFFF,
};

std::vector<double> notable_doubles() {
    std::vector<double> values;
    for (const uint64_t bits : k_notable_doubles) {
        values.push_back(as_double(bits));
        values.push_back(as_double(bits | 1ULL << 63));
    }
    return values;
}

bool compares_rightly(double a, double b) {
    const bool unordered = std::isnan(a) || std::isnan(b);
    return (__eqdf2(a, b) == 0) == (a == b) && (__nedf2(a, b) != 0) == (a != b) &&
           (__ltdf2(a, b) < 0) == (a < b) && (__ledf2(a, b) <= 0) == (a <= b) &&
           (__gtdf2(a, b) > 0) == (a > b) && (__gedf2(a, b) >= 0) == (a >= b) &&
           (__unorddf2(a, b) != 0) == unordered;
}

TEST(Runtime, DividesWords) {
    for_pairs(32, k_random_pairs, [](uint64_t first, uint64_t second) {
        const auto n = static_cast<uint32_t>(first);
        const auto d = static_cast<uint32_t>(second);
        return __udivsi3(n, d) == quotient(n, d) && __umodsi3(n, d) == rest(n, d);
    });
    for_pairs(32, k_random_pairs, [](uint64_t first, uint64_t second) {
        const auto n = static_cast<int32_t>(first);
        const auto d = static_cast<int32_t>(second);
        return __divsi3(n, d) == quotient(n, d) && __modsi3(n, d) == rest(n, d);
    });
}

TEST(Runtime, DividesDoubleWords) {
    for_pairs(64, k_random_long_pairs, [](uint64_t n, uint64_t d) {
        return __udivdi3(n, d) == quotient(n, d) && __umoddi3(n, d) == rest(n, d);
    });
    for_pairs(64, k_random_long_pairs, [](uint64_t first, uint64_t second) {
        const auto n = static_cast<int64_t>(first);
        const auto d = static_cast<int64_t>(second);
        return __divdi3(n, d) == quotient(n, d) && __moddi3(n, d) == rest(n, d);
    });
}

TEST(Runtime, ComparesDoubles) {
    const std::vector<double> values = notable_doubles();
    for (const double a : values) {
        for (const double b : values) {
            ASSERT_TRUE(compares_rightly(a, b)) << a << " " << b;
        }
    }
    for (int i = 0; i < k_random_pairs; ++i) {
        const uint64_t bits = next_random();
        const double a = as_double(bits);
        const double b = as_double(next_random());
        const double close = as_double(bits + next_random() % 3 - 1);
        if (!compares_rightly(a, b) || !compares_rightly(a, close)) {
            FAIL() << a << " " << b;
        }
    }
}

TEST(Runtime, FindsTheLowestBit) {
    EXPECT_EQ(__ctzsi2(0), 32);
    EXPECT_EQ(__ctzdi2(0), 64);
    for (int place = 0; place < 64; ++place) {
        for (int i = 0; i < 1000; ++i) {
            const uint64_t bits = (next_random() | 1) << place;
            ASSERT_EQ(__ctzdi2(bits), place);
            if (place < 32) {
                ASSERT_EQ(__ctzsi2(static_cast<uint32_t>(bits)), place);
            }
        }
    }
}

TEST(Runtime, JumpsBackWithWhatWasKept) {
    int context[10];
    EXPECT_EQ(jump_and_look(context, 7), 7036);
    EXPECT_EQ(jump_and_look(context, -1), -964);
    EXPECT_EQ(jump_and_look(context, 0), 1036);
}

}  // namespace
