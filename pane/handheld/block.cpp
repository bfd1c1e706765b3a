// The handheld's blocks stay where they are: a handle is a pointer, and there is nothing to lock.
#include "pane/block.h"

Block block_make(size_t size) {
    const HLOCAL handle = LocalAlloc(LMEM_FIXED, size);
    return {handle, handle};
}

void block_done(const Block &) {}

void block_free(const Block &block) {
    LocalFree(block.handle);
}

Block block_open(HANDLE handle) {
    return {handle, handle};
}
