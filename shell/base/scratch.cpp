#include "shell/base/scratch.h"

#include <cstdlib>

static struct Scratch {
    char *bytes;
    uint32_t size;
} scratch;

bool scratch_init() {
    free(scratch.bytes);
    scratch.bytes = static_cast<char *>(calloc(1, k_scratch_first_size));
    scratch.size = scratch.bytes != nullptr ? k_scratch_first_size : 0;
    return scratch.bytes != nullptr;
}

char *scratch_reserve(uint32_t size) {
    if (size > scratch.size) {
        char *larger = static_cast<char *>(realloc(scratch.bytes, size));
        if (larger == nullptr) {
            return nullptr;
        }
        scratch.bytes = larger;
        scratch.size = size;
    }
    return scratch.bytes;
}
