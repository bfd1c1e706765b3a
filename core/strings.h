// Copying strings into buffers of a known size.
#pragma once

#include <cstdint>

// Copies at most `limit` characters and a terminating zero; the buffer holds limit + 1 bytes.
// Returns the number copied. The strings may overlap.
uint32_t copy_string(char *to, const char *from, uint32_t limit);
