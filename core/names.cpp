#include "core/names.h"

#include <cstring>

bool is_letter(char ch) {
    return (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z');
}

bool is_digit(char ch) {
    return ch >= '0' && ch <= '9';
}

void cellname_normalise(char *buffer) {
    const char *start = buffer;
    while (*start != 0 && !is_letter(*start)) {
        ++start;
    }
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
