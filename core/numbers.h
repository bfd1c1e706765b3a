// Integers and floating-point numbers as text. What is written does not depend on the platform's C
// library or locale; what is read is cut to plain decimal numbers first.
#pragma once

#include <cstdint>

enum NumberKind : uint8_t {
    k_number_fixed = 0,
    k_number_exponent = 1,
    k_number_general = 2,
};

struct NumberFormat {
    uint8_t kind;    // NumberKind
    uint8_t digits;  // after the point (fixed, exponent), or significant (general); 0 to 18
    uint8_t width;   // 0 to 24
    uint8_t point;   // the decimal point's character; kept, never used
};

constexpr uint32_t k_number_text_max = 24;  // characters; buffers hold one more

// Reads a decimal integer the way atoi does, saturating. 0 and the value when it fits 16 bits
// signed; else -1 with the value unchanged. Text that is no number reads as 0.
int int16_parse(const char *text, int16_t *value);

// Writes the value, taken as signed 16-bit, in decimal. The buffer holds at least 7 bytes.
void int16_format(int32_t value, char *buffer);

// Reads the decimal number at the start of the text (no infinity, NaN or hexadecimal); 0.0 when
// there is none. Overflow gives the largest finite double. Always returns 0.
int number_parse(const char *text, double *value);

// Writes the value under the format and returns the length, at most 24. A text that would be longer
// is written in exponent form, with so many of the digits as then fit. A kind above 2 leaves the
// buffer (25 bytes) as it is and returns the length of what it holds.
uint32_t number_format(char *buffer, double value, const NumberFormat *format);

// Corrects the record (kind above 2 becomes 2, digits above 15 become 2, width above 24 becomes
// 24), keeps it as requested and brings it into force.
void number_format_set(NumberFormat *format);

// The format in force.
const NumberFormat *number_format_in_force();

// The initial number of every new value; refreshed by number_format_set().
double number_zero();
