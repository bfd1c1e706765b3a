#include "core/names.h"
#include "core/numbers.h"

#include <cfloat>
#include <cstdlib>
#include <cstring>

// Texts that are read as numbers come from buffers of this size at most.
constexpr size_t k_longest_number = 4095;

static struct NumberParse { char number[k_longest_number + 1]; } scratch;

namespace {

bool is_blank(char ch) {
    return ch == ' ' || (ch >= '\t' && ch <= '\r');
}

const char *skip_blanks(const char *p) {
    while (is_blank(*p)) {
        ++p;
    }
    return p;
}

const char *skip_sign(const char *p) {
    return *p == '+' || *p == '-' ? p + 1 : p;
}

const char *skip_digits(const char *p) {
    while (is_digit(*p)) {
        ++p;
    }
    return p;
}

// The end of the decimal number at p, or p when there is none.
const char *decimal_end(const char *p) {
    const char *first = skip_sign(p);
    const char *end = skip_digits(first);
    bool any = end > first;
    if (*end == '.') {
        const char *fraction = skip_digits(end + 1);
        any = any || fraction > end + 1;
        end = any ? fraction : end;
    }
    if (!any) {
        return p;
    }
    if (*end == 'e' || *end == 'E') {
        const char *exponent = skip_sign(end + 1);
        if (is_digit(*exponent)) {
            end = skip_digits(exponent);
        }
    }
    return end;
}

}  // namespace

int int16_parse(const char *text, int16_t *value) {
    const char *p = skip_blanks(text);
    const bool negative = *p == '-';
    int32_t number = 0;
    for (p = skip_sign(p); is_digit(*p); ++p) {
        number = number * 10 + (*p - '0');
        if (number > INT16_MAX + 1) {
            number = INT16_MAX + 2;  // out of range for good
        }
    }
    number = negative ? -number : number;
    if (number < INT16_MIN || number > INT16_MAX) {
        return -1;
    }
    *value = static_cast<int16_t>(number);
    return 0;
}

void int16_format(int32_t value, char *buffer) {
    const int32_t number = static_cast<int16_t>(value);
    char digits[8];
    static_assert(sizeof "32768" - 1 <= sizeof digits);
    uint32_t count = 0;
    uint32_t rest = static_cast<uint32_t>(number < 0 ? -number : number);
    do {
        digits[count++] = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    if (number < 0) {
        *buffer++ = '-';
    }
    while (count > 0) {
        *buffer++ = digits[--count];
    }
    *buffer = 0;
}

// Only the decimal prefix reaches the C library: they differ in what else they take.
int number_parse(const char *text, double *value) {
    const char *start = skip_blanks(text);
    size_t length = static_cast<size_t>(decimal_end(start) - start);
    if (length > k_longest_number) {
        length = k_longest_number;
    }
    memcpy(scratch.number, start, length);
    scratch.number[length] = 0;
    double number = length > 0 ? atof(scratch.number) : 0.0;
    if (number > DBL_MAX) {
        number = DBL_MAX;
    } else if (number < -DBL_MAX) {
        number = -DBL_MAX;
    }
    *value = number;
    return 0;
}
