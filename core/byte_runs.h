// Finding where a run of ordinary bytes ends, eight bytes at a time.
#pragma once

#include <cstdint>
#include <cstring>

// Marks (with its top bit) at least the lowest byte of the word that equals `byte`; no byte is
// marked when none does.
inline uint64_t mark_bytes(uint64_t word, uint8_t byte) {
    constexpr uint64_t k_ones = 0x0101010101010101;
    constexpr uint64_t k_tops = 0x8080808080808080;
    uint64_t zero_where_equal = word ^ (k_ones * byte);
    return (zero_where_equal - k_ones) & ~zero_where_equal & k_tops;
}

// The number of bytes from p on, at most n, before the first one that is among `stops`.
template <uint8_t... stops> uint32_t run_before(const uint8_t *p, uint32_t n) {
    uint32_t i = 0;
    for (; n - i >= sizeof(uint64_t); i += sizeof(uint64_t)) {
        uint64_t word;
        memcpy(&word, p + i, sizeof word);
        if ((mark_bytes(word, stops) | ...) != 0) {
            break;
        }
    }
    while (i < n && ((p[i] != stops) && ...)) {
        ++i;
    }
    return i;
}
