// A desktop moves blocks about, and their handles are no pointers.
#include "pane/block.h"

Block block_make(size_t size) {
    const HGLOBAL handle = GlobalAlloc(GMEM_MOVEABLE, size);
    return {handle, handle != nullptr ? GlobalLock(handle) : nullptr};
}

void block_done(const Block &block) {
    GlobalUnlock(block.handle);
}

void block_free(const Block &block) {
    GlobalFree(block.handle);
}

Block block_open(HANDLE handle) {
    return {handle, handle != nullptr ? GlobalLock(handle) : nullptr};
}
