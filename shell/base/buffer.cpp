#include "shell/base/buffer.h"

#include <cstdlib>

char *buffer_reserve(Buffer *buffer, uint32_t size) {
    if (size > buffer->size) {
        char *larger = static_cast<char *>(realloc(buffer->bytes, size));
        if (larger == nullptr) {
            return nullptr;
        }
        buffer->bytes = larger;
        buffer->size = size;
    }
    return buffer->bytes;
}

void buffer_free(Buffer *buffer) {
    free(buffer->bytes);
    *buffer = {};
}
