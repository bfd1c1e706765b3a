// Runs of bytes, many at a time. The lowest byte of a word is the first one: every machine that
// this runs on is little-endian.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

static_assert(std::endian::native == std::endian::little);

// Marks (with its top bit) the lowest byte of the word that equals `byte`, and perhaps higher ones
// that do not; no byte is marked when none does.
inline uint64_t mark_bytes(uint64_t word, uint8_t byte) {
    constexpr uint64_t k_ones = 0x0101010101010101;
    constexpr uint64_t k_tops = 0x8080808080808080;
    uint64_t zero_where_equal = word ^ (k_ones * byte);
    return (zero_where_equal - k_ones) & ~zero_where_equal & k_tops;
}

// Marks where the stride of bytes at p has stops: k_mark_bits bits for each byte, the first byte's
// lowest. The lowest mark is right; higher ones need not be. 0 for no stop.
#if defined(__SSE2__)
using StopMarks = uint32_t;
constexpr uint32_t k_stride = 16;
constexpr uint32_t k_mark_bits = 1;
template <uint8_t... stops> StopMarks mark_stops(const uint8_t *p) {
    using Bytes = uint8_t __attribute__((vector_size(k_stride)));
    using Chars = char __attribute__((vector_size(k_stride)));
    Bytes bytes;
    memcpy(&bytes, p, sizeof bytes);
    auto found = ((bytes == stops) | ...);
    return static_cast<StopMarks>(__builtin_ia32_pmovmskb128(reinterpret_cast<Chars>(found)));
}
#else
using StopMarks = uint64_t;
constexpr uint32_t k_stride = sizeof(StopMarks);
constexpr uint32_t k_mark_bits = 8;
template <uint8_t... stops> StopMarks mark_stops(const uint8_t *p) {
    uint64_t word;
    memcpy(&word, p, sizeof word);
    return (mark_bytes(word, stops) | ...);
}
#endif

// Which byte of a stride the lowest mark stands for.
inline uint32_t first_mark(StopMarks marks) {
    return static_cast<uint32_t>(std::countr_zero(marks)) / k_mark_bits;
}

// The number of bytes from p on, at most n, before the first one that is among `stops`. The last
// stride overlaps the one before it, in which nothing was found.
template <uint8_t... stops> uint32_t run_before(const uint8_t *p, uint32_t n) {
    if (n < k_stride) {
        uint32_t i = 0;
        while (i < n && ((p[i] != stops) && ...)) {
            ++i;
        }
        return i;
    }
    uint32_t last = n - k_stride;
    for (uint32_t i = 0; i < last; i += k_stride) {
        StopMarks marks = mark_stops<stops...>(p + i);
        if (marks != 0) {
            return i + first_mark(marks);
        }
    }
    StopMarks marks = mark_stops<stops...>(p + last);
    return marks != 0 ? last + first_mark(marks) : n;
}

// Copies n bytes, which are few: by moves that overlap, without a call or a loop.
inline void copy_short(char *d, const char *s, uint32_t n) {
    if (n >= 16) {
        for (uint32_t i = 16; i < n; i += 16) {
            memcpy(d + i - 16, s + i - 16, 16);
        }
        memcpy(d + n - 16, s + n - 16, 16);
    } else if (n >= 4) {
        uint32_t half = n / 8 * 4;
        memcpy(d, s, 4);
        memcpy(d + half, s + half, 4);
        memcpy(d + n - 4 - half, s + n - 4 - half, 4);
        memcpy(d + n - 4, s + n - 4, 4);
    } else {
        for (uint32_t i = 0; i < n; ++i) {
            d[i] = s[i];
        }
    }
}

// The number of bytes, at most n, in which x and y begin alike.
inline uint32_t equal_run(const char *x, const char *y, uint32_t n) {
    uint32_t i = 0;
    for (; n - i >= sizeof(uint64_t); i += sizeof(uint64_t)) {
        uint64_t a;
        uint64_t b;
        memcpy(&a, x + i, sizeof a);
        memcpy(&b, y + i, sizeof b);
        if (a != b) {
            return i + static_cast<uint32_t>(std::countr_zero(a ^ b)) / 8;
        }
    }
    while (i < n && x[i] == y[i]) {
        ++i;
    }
    return i;
}
