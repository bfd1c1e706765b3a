// Division of double words, bit by bit where it takes more than one.
#include "handheld/runtime/runtime.h"

namespace {

constexpr uint64_t k_top_bit = 1ULL << 63;

bool is_word(uint64_t n) {
    return n >> 32 == 0;
}

uint64_t divide(uint64_t n, uint64_t d, uint64_t *rest) {
    if (is_word(n) && is_word(d)) {
        const uint32_t quotient = __udivsi3(static_cast<uint32_t>(n), static_cast<uint32_t>(d));
        *rest = n - quotient * d;
        return quotient;
    }
    uint64_t quotient = 0;
    *rest = n;
    if (d == 0) {
        return 0;
    }
    uint64_t bit = 1;
    while (d < n && (d & k_top_bit) == 0) {
        d <<= 1;
        bit <<= 1;
    }
    for (; bit != 0; bit >>= 1, d >>= 1) {
        if (*rest >= d) {
            *rest -= d;
            quotient |= bit;
        }
    }
    return quotient;
}

uint64_t size_of(int64_t n) {
    return n < 0 ? 0 - static_cast<uint64_t>(n) : static_cast<uint64_t>(n);
}

int64_t with_sign(uint64_t size, bool negative) {
    return static_cast<int64_t>(negative ? 0 - size : size);
}

}  // namespace

uint64_t __udivdi3(uint64_t n, uint64_t d) {
    uint64_t rest = 0;
    return divide(n, d, &rest);
}

uint64_t __umoddi3(uint64_t n, uint64_t d) {
    uint64_t rest = 0;
    divide(n, d, &rest);
    return rest;
}

int64_t __divdi3(int64_t n, int64_t d) {
    return with_sign(__udivdi3(size_of(n), size_of(d)), (n < 0) != (d < 0));
}

int64_t __moddi3(int64_t n, int64_t d) {
    return with_sign(__umoddi3(size_of(n), size_of(d)), n < 0);
}
