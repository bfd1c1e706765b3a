// Blocks of memory as the clipboard wants them. desktop/block.cpp and handheld/block.cpp define
// them.
#pragma once

#include <windows.h>

#include <cstddef>

// A block to put on the clipboard, with its bytes in reach; null without memory.
struct Block {
    HANDLE handle;
    void *bytes;
};

Block block_make(size_t size);

// Done with filling it: it can be given away, or freed.
void block_done(const Block &block);
void block_free(const Block &block);

// A block that the clipboard gives; null bytes when there is none.
Block block_open(HANDLE handle);
