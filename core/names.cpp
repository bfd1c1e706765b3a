#include "core/names.h"

#include <cstring>

bool is_letter(char ch) {
    return (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z');
}

bool is_digit(char ch) {
    return ch >= '0' && ch <= '9';
}

const char *cellname_start(const char *s) {
    while (*s != 0 && !is_letter(*s)) {
        ++s;
    }
    return s;
}

void cellname_normalise(char *buffer) {
    const char *start = cellname_start(buffer);
    size_t length = strlen(start);
    if (length > k_cellname_max) {
        length = k_cellname_max;
    }
    memmove(buffer, start, length);
    buffer[length] = 0;
}

bool cellname_valid(const char *s) {
    return is_letter(s[0]);
}
