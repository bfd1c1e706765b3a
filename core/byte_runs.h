// Runs of bytes, many at a time. The lowest byte of a word is the first one: every machine that
// this runs on is little-endian.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

static_assert(std::endian::native == std::endian::little);

// As many bytes as the machine computes with at once.
using Word = uintptr_t;
constexpr uint32_t k_word_size = sizeof(Word);
constexpr Word k_ones = ~Word{0} / 0xFF;  // 1 in every byte
constexpr Word k_tops = k_ones << 7;      // the top bit of every byte

// Integers wherever they stand. Compilers for machines whose words must be aligned make a call of
// memcpy() instead.
template <typename Integer> struct [[gnu::packed, gnu::may_alias]] Unaligned {
    Integer value;
};

template <typename Integer> Integer load(const void *p) {
    return static_cast<const Unaligned<Integer> *>(p)->value;
}

template <typename Integer> void store(void *p, Integer value) {
    static_cast<Unaligned<Integer> *>(p)->value = value;
}

// Which byte of the word has the lowest bit that is set.
inline uint32_t lowest_byte(Word bits) {
    return static_cast<uint32_t>(std::countr_zero(bits)) / 8;
}

// Marks (with its top bit) the lowest byte of the word that is among `stops`, and perhaps higher
// ones that are not; no byte is marked when none is. Taking 1 from a byte that equals its stop
// borrows into its top bit, which it did not have before: stops are below 0x80.
template <uint8_t... stops> Word mark_stops(Word word) {
    static_assert(((stops < 0x80) && ...));
    return (((word ^ k_ones * stops) - k_ones) | ...) & ~word & k_tops;
}

// The number of bytes from p on before the first one that is among `stops`. There is one, and the
// bytes of a word behind it can be read.
template <uint8_t... stops> uint32_t run_to(const uint8_t *p) {
    for (uint32_t i = 0;; i += k_word_size) {
        const Word marks = mark_stops<stops...>(load<Word>(p + i));
        if (marks != 0) {
            return i + lowest_byte(marks);
        }
    }
}

// The number of bytes from p on before the first one below 0x40, under the same conditions: letters
// and what lies about them.
inline uint32_t run_of_letters(const uint8_t *p) {
    for (uint32_t i = 0;; i += k_word_size) {
        const Word word = load<Word>(p + i);
        const Word marks = ~(word | word << 1) & k_tops;
        if (marks != 0) {
            return i + lowest_byte(marks);
        }
    }
}

// The same as run_to() among n bytes, which may hold none: n then. The last word overlaps the one
// before it, in which nothing was found.
template <uint8_t... stops> uint32_t run_before(const uint8_t *p, uint32_t n) {
    if (n < k_word_size) {
        uint32_t i = 0;
        while (i < n && ((p[i] != stops) && ...)) {
            ++i;
        }
        return i;
    }
    const uint32_t last = n - k_word_size;
    for (uint32_t i = 0; i < last; i += k_word_size) {
        const Word marks = mark_stops<stops...>(load<Word>(p + i));
        if (marks != 0) {
            return i + lowest_byte(marks);
        }
    }
    const Word marks = mark_stops<stops...>(load<Word>(p + last));
    return marks != 0 ? last + lowest_byte(marks) : n;
}

// Copies n bytes, which are few: by moves that overlap, without a call or a loop.
inline void copy_short(char *d, const char *s, uint32_t n) {
    if (n >= 16) {
        for (uint32_t i = 16; i < n; i += 16) {
            memcpy(d + i - 16, s + i - 16, 16);
        }
        memcpy(d + n - 16, s + n - 16, 16);
    } else if (n >= 4) {
        const uint32_t half = n / 8 * 4;
        store(d, load<uint32_t>(s));
        store(d + half, load<uint32_t>(s + half));
        store(d + n - 4 - half, load<uint32_t>(s + n - 4 - half));
        store(d + n - 4, load<uint32_t>(s + n - 4));
    } else if (n >= 2) {
        store(d, load<uint16_t>(s));
        store(d + n - 2, load<uint16_t>(s + n - 2));
    } else if (n == 1) {
        *d = *s;
    }
}

// The number of bytes, at most n, in which x and y begin alike.
inline uint32_t equal_run(const char *x, const char *y, uint32_t n) {
    uint32_t i = 0;
    for (; n - i >= k_word_size; i += k_word_size) {
        const Word difference = load<Word>(x + i) ^ load<Word>(y + i);
        if (difference != 0) {
            return i + lowest_byte(difference);
        }
    }
    while (i < n && x[i] == y[i]) {
        ++i;
    }
    return i;
}
