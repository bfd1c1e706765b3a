// One block of heap memory for whoever moves bytes between a pane and the arena. It belongs to its
// last caller until somebody else reserves it, and is never given back: an operation that the
// arena cuts short cannot leak it.
#pragma once

#include <cstdint>

constexpr uint32_t k_scratch_first_size = 4096;

// Takes the first 4,096 bytes, zeroed; once at start-up. False when there is no memory.
bool scratch_init();

// At least `size` bytes, contents unknown; null when there is no memory.
char *scratch_reserve(uint32_t size);
