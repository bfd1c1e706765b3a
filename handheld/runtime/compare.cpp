// Comparing doubles by their bits.
#include "handheld/runtime/runtime.h"

#include <bit>

namespace {

constexpr uint64_t k_sign = 1ULL << 63;
constexpr uint64_t k_infinity = 0x7FF0000000000000;

bool is_nan(uint64_t bits) {
    return (bits & ~k_sign) > k_infinity;
}

// A number that stands to others as the double does, the two zeros at one place.
int64_t rank(uint64_t bits) {
    const int64_t size = static_cast<int64_t>(bits & ~k_sign);
    return (bits & k_sign) != 0 ? -size : size;
}

int compare(double a, double b, int with_nan) {
    const uint64_t a_bits = std::bit_cast<uint64_t>(a);
    const uint64_t b_bits = std::bit_cast<uint64_t>(b);
    if (is_nan(a_bits) || is_nan(b_bits)) {
        return with_nan;
    }
    const int64_t one = rank(a_bits);
    const int64_t other = rank(b_bits);
    return one < other ? -1 : one > other ? 1 : 0;
}

}  // namespace

int __eqdf2(double a, double b) {
    return compare(a, b, 1);
}

int __nedf2(double a, double b) {
    return compare(a, b, 1);
}

int __ltdf2(double a, double b) {
    return compare(a, b, 1);
}

int __ledf2(double a, double b) {
    return compare(a, b, 1);
}

int __gtdf2(double a, double b) {
    return compare(a, b, -1);
}

int __gedf2(double a, double b) {
    return compare(a, b, -1);
}

int __unorddf2(double a, double b) {
    return is_nan(std::bit_cast<uint64_t>(a)) || is_nan(std::bit_cast<uint64_t>(b)) ? 1 : 0;
}
