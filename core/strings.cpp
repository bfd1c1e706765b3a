#include "core/strings.h"

#include <cstring>

uint32_t copy_string(char *to, const char *from, uint32_t limit) {
    uint32_t length = 0;
    while (length < limit && from[length] != 0) {
        ++length;
    }
    memmove(to, from, length);
    to[length] = 0;
    return length;
}
