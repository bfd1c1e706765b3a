// Heap memory that grows: for what the arena does not hold.
#pragma once

#include <cstdint>

struct Buffer {
    char *bytes;  // null: none yet
    uint32_t size;
};

// At least `size` bytes, the old ones kept, the new ones unknown. Null when there is no memory; the
// buffer then stays as it was.
char *buffer_reserve(Buffer *buffer, uint32_t size);

void buffer_free(Buffer *buffer);
