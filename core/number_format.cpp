// Floating-point numbers are written exactly, from the bits, because C libraries differ: in the
// number of digits that they compute and in the digits of an exponent.
#include "core/numbers.h"

#include <cmath>
#include <cstring>

constexpr uint8_t k_max_digits = 18;  // that number_format() takes
constexpr uint8_t k_max_digits_in_force = 15;
constexpr uint8_t k_fallback_digits = 2;
constexpr uint8_t k_max_width = 24;

// A finite double has at most 309 digits before the point and 1,074 behind it.
constexpr int32_t k_integer_digits = 309;
constexpr int32_t k_fraction_digits = 1074;
constexpr uint32_t k_limb = 1000000000;  // digits are made nine at a time
constexpr uint32_t k_words = 36;         // 32-bit words: 1,024 bits before the point, 1,074 behind

// 0.d1 d2 d3 ... times ten to the power of `point`.
struct Decimal {
    bool negative;
    int32_t count;
    int32_t point;
    char digits[k_integer_digits + k_fraction_digits + 18];  // each part is made nine at a time
};
static_assert((k_integer_digits + 8) / 9 * 9 + (k_fraction_digits + 8) / 9 * 9 <=
              sizeof Decimal::digits);

static struct Formats {
    NumberFormat requested;
    NumberFormat in_force;
    double zero;
} formats = {{k_number_general, 2, 24, '.'}, {k_number_general, 2, 24, '.'}, 0.0};

static struct Numbers {
    Decimal decimal;
    uint32_t words[k_words];
    char text[k_integer_digits + k_max_digits + 8];
} numbers;

namespace {

// "-", the digits with their point, and the end; an exponent takes five and comes with one digit
// before the point.
static_assert(1 + k_integer_digits + 1 + k_max_digits + 1 <= sizeof numbers.text);
static_assert(1 + 1 + 1 + k_max_digits + 5 + 1 <= sizeof numbers.text);

void put_limb(char *to, uint32_t limb) {
    for (int32_t i = 8; i >= 0; --i) {
        to[i] = static_cast<char>('0' + limb % 10);
        limb /= 10;
    }
}

void strip_leading_zeros(Decimal *d) {
    int32_t zeros = 0;
    while (zeros < d->count && d->digits[zeros] == '0') {
        ++zeros;
    }
    d->count -= zeros;
    d->point -= zeros;
    memmove(d->digits, d->digits + zeros, static_cast<size_t>(d->count));
}

// Sets 64 bits of the words, from bit `at` on.
void set_bits(uint64_t bits, uint32_t at) {
    const uint32_t shift = at % 32;
    numbers.words[at / 32] = static_cast<uint32_t>(bits << shift);
    numbers.words[at / 32 + 1] = static_cast<uint32_t>((bits << shift) >> 32);
    numbers.words[at / 32 + 2] = shift == 0 ? 0 : static_cast<uint32_t>(bits >> (64 - shift));
}

// Digits of mantissa * 2^exponent for exponent >= 0, by repeated division of the integer.
void integer_digits(Decimal *d, uint64_t mantissa, int32_t exponent) {
    constexpr int32_t k_limbs = (k_integer_digits + 8) / 9;
    set_bits(mantissa, static_cast<uint32_t>(exponent));
    for (int32_t limb = k_limbs - 1; limb >= 0; --limb) {
        uint64_t rest = 0;
        for (uint32_t i = k_words; i-- > 0;) {
            rest = rest << 32 | numbers.words[i];
            numbers.words[i] = static_cast<uint32_t>(rest / k_limb);
            rest %= k_limb;
        }
        put_limb(&d->digits[d->count + limb * 9], static_cast<uint32_t>(rest));
    }
    d->count += k_limbs * 9;
    d->point = d->count;
}

// Digits of mantissa / 2^bits, which is below 1, by repeated multiplication of the fraction.
void fraction_digits(Decimal *d, uint64_t mantissa, uint32_t bits) {
    constexpr uint32_t k_top = 1088;  // the fraction's bits end at this word border
    set_bits(mantissa, k_top - bits);
    for (uint32_t made = 0; made < bits; made += 9) {
        uint64_t carry = 0;
        for (uint32_t i = 0; i < k_top / 32; ++i) {
            carry += static_cast<uint64_t>(numbers.words[i]) * k_limb;
            numbers.words[i] = static_cast<uint32_t>(carry);
            carry >>= 32;
        }
        put_limb(d->digits + d->count, static_cast<uint32_t>(carry));
        d->count += 9;
    }
}

// All digits of a finite value, without leading zeros.
void expand(Decimal *d, double value) {
    uint64_t bits;
    memcpy(&bits, &value, sizeof bits);
    int32_t exponent = static_cast<int32_t>(bits >> 52 & 0x7FF);
    uint64_t mantissa = bits & 0xFFFFFFFFFFFFF;
    if (exponent == 0) {
        exponent = 1;
    } else {
        mantissa |= uint64_t{1} << 52;
    }
    exponent -= 1075;
    d->negative = (bits >> 63) != 0;
    d->count = 0;
    memset(numbers.words, 0, sizeof numbers.words);
    if (exponent >= 0) {
        integer_digits(d, mantissa, exponent);
    } else {
        const uint32_t behind = static_cast<uint32_t>(-exponent);
        integer_digits(d, behind < 64 ? mantissa >> behind : 0, 0);
        memset(numbers.words, 0, sizeof numbers.words);
        fraction_digits(d, behind < 64 ? mantissa & ((uint64_t{1} << behind) - 1) : mantissa,
                        behind);
    }
    strip_leading_zeros(d);
}

// Whether cutting the digits at `keep` rounds up: to nearest, ties to even.
bool rounds_up(const Decimal *d, int32_t keep) {
    if (keep >= d->count || d->digits[keep] != '5') {
        return keep < d->count && d->digits[keep] > '5';
    }
    for (int32_t i = keep + 1; i < d->count; ++i) {
        if (d->digits[i] != '0') {
            return true;
        }
    }
    return keep > 0 && (d->digits[keep - 1] - '0') % 2 != 0;
}

// Rounds to `keep` significant digits; fewer than none leaves zero.
void round_to(Decimal *d, int32_t keep) {
    const bool up = keep >= 0 && rounds_up(d, keep);
    if (keep < d->count) {
        d->count = keep > 0 ? keep : 0;
    }
    if (!up) {
        return;
    }
    int32_t i = keep - 1;
    while (i >= 0 && d->digits[i] == '9') {
        --i;
    }
    if (i >= 0) {
        ++d->digits[i];
        d->count = i + 1;
    } else {
        d->digits[0] = '1';
        d->count = 1;
        ++d->point;
    }
}

char digit_at(const Decimal *d, int32_t i) {
    return i >= 0 && i < d->count ? d->digits[i] : '0';
}

char *put_digits(char *to, const Decimal *d, int32_t from, int32_t count) {
    for (int32_t i = 0; i < count; ++i) {
        *to++ = digit_at(d, from + i);
    }
    return to;
}

// Writes the rounded digits with `decimals` behind the point; returns the end.
char *put_fixed(char *to, const Decimal *d, int32_t decimals) {
    const int32_t before = d->count > 0 && d->point > 0 ? d->point : 0;
    to = before > 0 ? put_digits(to, d, 0, before) : (*to = '0', to + 1);
    if (decimals > 0) {
        *to++ = '.';
        to = put_digits(to, d, d->count > 0 ? d->point : 0, decimals);
    }
    return to;
}

int32_t decimal_exponent(const Decimal *d) {
    return d->count > 0 ? d->point - 1 : 0;
}

char *put_exponent(char *to, const Decimal *d, int32_t decimals) {
    *to++ = digit_at(d, 0);
    if (decimals > 0) {
        *to++ = '.';
        to = put_digits(to, d, 1, decimals);
    }
    int32_t exponent = decimal_exponent(d);
    *to++ = 'e';
    *to++ = exponent < 0 ? '-' : '+';
    exponent = exponent < 0 ? -exponent : exponent;
    if (exponent >= 100) {
        *to++ = static_cast<char>('0' + exponent / 100);
    }
    *to++ = static_cast<char>('0' + exponent / 10 % 10);
    *to++ = static_cast<char>('0' + exponent % 10);
    return to;
}

// The general format drops zeros at the end: it shows as many decimals as there are digits left.
int32_t decimals_left(const Decimal *d, int32_t point) {
    int32_t count = d->count;
    while (count > 0 && d->digits[count - 1] == '0') {
        --count;
    }
    const int32_t left = count - point;
    return left < 0 ? 0 : left;
}

char *put_general(char *to, Decimal *d, int32_t significant) {
    significant = significant == 0 ? 1 : significant;
    round_to(d, significant);
    const int32_t exponent = decimal_exponent(d);
    if (exponent < -4 || exponent >= significant) {
        return put_exponent(to, d, decimals_left(d, 1));
    }
    const int32_t point = d->count > 0 ? d->point : 0;
    return put_fixed(to, d, decimals_left(d, point));
}

// Writes the value into numbers.text; returns the length.
uint32_t write_number(double value, uint8_t kind, int32_t digits) {
    Decimal *d = &numbers.decimal;
    expand(d, value);
    char *to = numbers.text;
    if (d->negative) {
        *to++ = '-';
    }
    switch (kind) {
    case k_number_fixed:
        round_to(d, d->point + digits);
        to = put_fixed(to, d, digits);
        break;
    case k_number_exponent:
        round_to(d, digits + 1);
        to = put_exponent(to, d, digits);
        break;
    default:
        to = put_general(to, d, digits);
        break;
    }
    *to = 0;
    return static_cast<uint32_t>(to - numbers.text);
}

uint32_t write_not_finite(double value) {
    strcpy(numbers.text, std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf");
    return static_cast<uint32_t>(strlen(numbers.text));
}

}  // namespace

uint32_t number_format(char *buffer, double value, const NumberFormat *format) {
    if (format->kind > k_number_general) {
        return static_cast<uint32_t>(strlen(buffer));
    }
    int32_t digits = format->digits < k_max_digits ? format->digits : k_max_digits;
    uint32_t length =
        std::isfinite(value) ? write_number(value, format->kind, digits) : write_not_finite(value);
    // Seventeen and eighteen digits with a three-digit exponent do not fit either: one digit less
    // each time until they do.
    for (; length > k_number_text_max; --digits) {
        length = write_number(value, k_number_exponent, digits);
    }
    memcpy(buffer, numbers.text, length + 1);
    return length;
}

void number_format_set(NumberFormat *format) {
    if (format->kind > k_number_general) {
        format->kind = k_number_general;
    }
    if (format->digits > k_max_digits_in_force) {
        format->digits = k_fallback_digits;
    }
    if (format->width > k_max_width) {
        format->width = k_max_width;
    }
    formats.requested = *format;
    formats.in_force = *format;
    formats.zero = 0.0;
}

const NumberFormat *number_format_in_force() {
    return &formats.in_force;
}

double number_zero() {
    return formats.zero;
}
