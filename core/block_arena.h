// The block arena: 10,000 blocks of 40 bytes that hold everything a web consists of.
//
// A block is named by a 16-bit handle; 0 is none. Whoever holds the handle of a chain's first block
// owns the whole chain and releases it with chain_free(). The arena never grows; when the last
// block is gone the operation in hand is abandoned by a jump to the recovery point
// (core/recovery.h), so no destructor and no open resource may stand between a recovery point and
// an allocation.
#pragma once

#include <cstddef>
#include <cstdint>

using BlockHandle = uint16_t;

// Handle of the node block that holds a cell (web/cells.h); 0 is none.
using CellHandle = BlockHandle;

constexpr uint32_t k_block_count = 10000;
constexpr uint32_t k_block_size = 40;
constexpr uint32_t k_low_block_count = 100;  // fewer free blocks than this is "short on memory"

// The type decides which bytes are cleared when a block is allocated.
enum BlockType : uint8_t {
    k_block_plain = 0,
    k_block_text = 16,
    k_block_link = 32,
    k_block_node = 64,
};

// Byte offsets within a block. All fields wider than a byte are little-endian and unaligned.
constexpr uint32_t k_block_type_at = 0;
constexpr uint32_t k_block_count_at = 1;
constexpr uint32_t k_block_next_at = 2;
constexpr uint32_t k_block_payload_at = 4;
constexpr uint32_t k_block_payload_size = k_block_size - k_block_payload_at;

// Empties the arena: the free chain is 1, 2, ..., 10,000.
void block_arena_init();

// Takes a block and clears it as its type demands. Leaves through the recovery point when none is
// free. When fewer than 100 blocks stay free the user is offered to save and exit, at every
// allocation.
BlockHandle block_alloc(uint8_t type);

// The same, but 0 when there is none: for what can be done without.
BlockHandle block_try_alloc(uint8_t type);

// Gives up the operation in hand as block_alloc() does with no block left.
[[noreturn]] void run_out_of_blocks();

// Links blocks that hold these n bytes (at least one) in behind the last block of a chain, which
// `tail` then names. Returns how many of the bytes found a place: all, or one block's while blocks
// are short. Leaves through the recovery point like block_alloc().
uint32_t chain_extend(BlockHandle *tail, uint8_t type, const char *bytes, uint32_t n);

// Gives one block back, which is taken; 0 does nothing. The last block released is the next one
// handed out.
void block_free(BlockHandle h);

// Gives back a chain, head first; 0 does nothing.
void chain_free(BlockHandle head);

// Clears a block according to its type: the count byte, and for the known types everything behind.
void block_clear(BlockHandle h);

// The blocks themselves, by handle; for block_ptr() only.
extern uint8_t arena_blocks[(k_block_count + 1) * k_block_size];

// Address of the block's 40 bytes; no range check. Handle 0 has bytes too, which mean nothing.
inline uint8_t *block_ptr(BlockHandle h) {
    return arena_blocks + size_t{h} * k_block_size;
}

// Little-endian access to a field of a block, by byte offset.
inline uint16_t block_get16(BlockHandle h, uint32_t at) {
    const uint8_t *p = block_ptr(h) + at;
    return static_cast<uint16_t>(p[0] | p[1] << 8);
}
inline void block_set16(BlockHandle h, uint32_t at, uint16_t value) {
    uint8_t *p = block_ptr(h) + at;
    p[0] = static_cast<uint8_t>(value);
    p[1] = static_cast<uint8_t>(value >> 8);
}
inline uint32_t block_get32(BlockHandle h, uint32_t at) {
    return block_get16(h, at) | static_cast<uint32_t>(block_get16(h, at + 2)) << 16;
}
inline void block_set32(BlockHandle h, uint32_t at, uint32_t value) {
    block_set16(h, at, static_cast<uint16_t>(value));
    block_set16(h, at + 2, static_cast<uint16_t>(value >> 16));
}

inline uint8_t block_used(BlockHandle h) {
    return block_ptr(h)[k_block_count_at];
}
inline BlockHandle block_next(BlockHandle h) {
    return block_get16(h, k_block_next_at);
}
inline void block_set_next(BlockHandle h, BlockHandle next) {
    block_set16(h, k_block_next_at, next);
}

uint16_t blocks_in_use();
uint16_t blocks_free();

// True once an allocation has left fewer than 100 blocks; only block_arena_init() takes it back.
bool low_on_blocks();

// ---- Running short, and running out -------------------------------------------------------------

// Asks "Short On Memory--Save And Exit?" and saves and exits on OK. Does nothing for a user who has
// already said OK and whose save is under way.
void short_on_memory_offer();

// True while that question, or the saving that follows it, is under way in the middle of an
// allocation. What the allocation is for must then be left alone.
bool short_on_memory_offer_open();

// The text chain that is being allocated, which recovery gives back; 0 is none. Owned by
// core/text.cpp.
void chain_under_construction_set(BlockHandle head);

// Keeps a finished chain safe while more is allocated: recovery gives parked chains back. Parks
// nest; at most k_parked_max at a time. 0 may be parked.
constexpr uint32_t k_parked_max = 8;
void chain_park(BlockHandle head);

// Takes the chain parked last off again and returns it; it is the caller's once more.
BlockHandle chain_unpark();

// Gives back the chain under construction and every parked chain. Part of recovery.
void block_arena_recover();

// Start-up is complete: running out now jumps to the recovery point. Until then it shows "OUT OF
// MEMORY" and ends the program with -1.
void block_arena_allow_recovery(bool armed);

// ---- Faults, for tests --------------------------------------------------------------------------

// Makes the allocation after `countdown` further ones fail as though no block were free, and every
// later one too when `for_ever`. A negative countdown turns faults off.
void block_arena_fail_after(int32_t countdown, bool for_ever);

// Calls `visit` for every block of the free chain, in its order, until it returns false; for
// checkers.
void block_arena_each_free(bool (*visit)(BlockHandle h, void *context), void *context);
