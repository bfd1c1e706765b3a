#include "shell/base/scratch.h"

#include "shell/base/buffer.h"

#include <cstring>

static struct Scratch { Buffer buffer; } scratch;

bool scratch_init() {
    buffer_free(&scratch.buffer);
    char *bytes = buffer_reserve(&scratch.buffer, k_scratch_first_size);
    if (bytes != nullptr) {
        memset(bytes, 0, k_scratch_first_size);
    }
    return bytes != nullptr;
}

char *scratch_reserve(uint32_t size) {
    return buffer_reserve(&scratch.buffer, size);
}
