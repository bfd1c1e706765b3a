// Runs of bytes, eight at a time. The lowest byte of a word is the first one: every machine that
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

#if defined(__SSE2__)
// Sixteen bytes at a time where the machine compares them in one instruction.
using ByteVector = uint8_t __attribute__((vector_size(16)));

template <uint8_t... stops> bool has_stop(const uint8_t *p) {
    ByteVector bytes;
    memcpy(&bytes, p, sizeof bytes);
    auto marks = ((bytes == stops) | ...);
    uint64_t halves[2];
    memcpy(halves, &marks, sizeof halves);
    return (halves[0] | halves[1]) != 0;
}
constexpr uint32_t k_stop_stride = 16;
#else
template <uint8_t... stops> bool has_stop(const uint8_t *p) {
    uint64_t word;
    memcpy(&word, p, sizeof word);
    return (mark_bytes(word, stops) | ...) != 0;
}
constexpr uint32_t k_stop_stride = sizeof(uint64_t);
#endif

// The number of bytes from p on, at most n, before the first one that is among `stops`.
template <uint8_t... stops> uint32_t run_before(const uint8_t *p, uint32_t n) {
    uint32_t i = 0;
    while (n - i >= k_stop_stride && !has_stop<stops...>(p + i)) {
        i += k_stop_stride;
    }
    for (; n - i >= sizeof(uint64_t); i += sizeof(uint64_t)) {
        uint64_t word;
        memcpy(&word, p + i, sizeof word);
        uint64_t marks = (mark_bytes(word, stops) | ...);
        if (marks != 0) {
            return i + static_cast<uint32_t>(std::countr_zero(marks)) / 8;
        }
    }
    while (i < n && ((p[i] != stops) && ...)) {
        ++i;
    }
    return i;
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
