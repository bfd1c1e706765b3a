#include "core/block_arena.h"

#include "core/byte_runs.h"
#include "core/check.h"
#include "core/errors.h"
#include "core/host_messages.h"
#include "core/recovery.h"

#include <cstring>

// Block 0 is never handed out and handle 10,000 is: the storage holds both.
uint8_t arena_blocks[(k_block_count + 1) * k_block_size];

static struct Arena {
    BlockHandle free_head;
    uint16_t low_memory;
    uint16_t free_count;
    BlockHandle under_construction;
    bool armed;
    bool exit_agreed;  // the user said OK to save and exit, which is under way
    uint8_t offers_open;
    BlockHandle parked[k_parked_max];
    uint32_t parked_count;
    int32_t fault_countdown;  // allocations until one fails; negative: never
    bool fault_for_ever;
    bool taken[k_block_count + 1];  // by handle: not on the free chain
} arena;

namespace {

bool is_taken(BlockHandle h) {
    return h <= k_block_count && arena.taken[h];
}

// True when a test wants this allocation to fail.
bool fault_due() {
    if (arena.fault_countdown < 0) {
        return false;
    }
    if (arena.fault_countdown > 0) {
        --arena.fault_countdown;
        return false;
    }
    if (!arena.fault_for_ever) {
        arena.fault_countdown = -1;
    }
    return true;
}

inline void clear(uint8_t *block) {
    block[k_block_count_at] = 0;
    switch (block[k_block_type_at] & 127) {
    case k_block_plain:
    case k_block_text:
    case k_block_link:
    case k_block_node:
        memset(block + k_block_next_at, 0, k_block_size - k_block_next_at);
        break;
    default:
        break;  // the next field keeps the free chain's link
    }
}

BlockHandle take_block(uint8_t type) {
    const BlockHandle h = arena.free_head;
    block_ptr(h)[k_block_type_at] = type;
    arena.free_head = block_next(h);
    arena.taken[h] = true;
    --arena.free_count;
    // The free chain leads all over the arena: the next block's place in the chain is on its way
    // by the time it is asked for.
    __builtin_prefetch(block_ptr(arena.free_head), 1);
    clear(block_ptr(h));
    if (arena.free_count < k_low_block_count) {
        arena.low_memory = 1;
        short_on_memory_offer();
    }
    return h;
}

// With QUORVANE_SPOIL_RELEASED whoever still looks at what he released finds handles that are out
// of range.
void spoil([[maybe_unused]] BlockHandle h) {
#ifdef QUORVANE_SPOIL_RELEASED
    memset(block_ptr(h) + k_block_payload_at, 0xDD, k_block_payload_size);
#endif
}

// True when this many allocations have nothing to look out for.
bool are_plenty(uint32_t n) {
    return arena.free_count >= n + k_low_block_count && arena.fault_countdown < 0;
}

// Fills a block that is as allocated.
void fill(BlockHandle h, const char *bytes, uint32_t n) {
    uint8_t *block = block_ptr(h);
    block[k_block_count_at] = static_cast<uint8_t>(n);
    copy_short(reinterpret_cast<char *>(block + k_block_payload_at), bytes, n);
}

uint32_t extend_by_one(BlockHandle *tail, uint8_t type, const char *bytes, uint32_t n) {
    const uint32_t taken = n < k_block_payload_size ? n : k_block_payload_size;
    const BlockHandle h = block_alloc(type);
    fill(h, bytes, taken);
    block_set_next(*tail, h);
    *tail = h;
    return taken;
}

}  // namespace

void block_arena_init() {
    arena.free_head = 1;
    arena.low_memory = 0;
    arena.free_count = k_block_count;
    arena.exit_agreed = false;
    arena.offers_open = 0;
    arena.parked_count = 0;
    memset(arena.taken, 0, sizeof arena.taken);
    arena.fault_countdown = -1;
    for (uint32_t h = 1; h < k_block_count; ++h) {
        uint8_t *block = block_ptr(static_cast<BlockHandle>(h));
        block[k_block_type_at] = k_block_plain;
        memset(block + k_block_next_at, 0, k_block_size - k_block_next_at);
        block_set_next(static_cast<BlockHandle>(h), static_cast<BlockHandle>(h + 1));
    }
    block_set_next(k_block_count, 0);
    arena.under_construction = 0;
}

BlockHandle block_alloc(uint8_t type) {
    const BlockHandle h = block_try_alloc(type);
    if (h == 0) {
        run_out_of_blocks();
    }
    return h;
}

BlockHandle block_try_alloc(uint8_t type) {
    return arena.free_head == 0 || fault_due() ? 0 : take_block(type);
}

// The front of the free chain is a chain already: its blocks keep their links.
uint32_t chain_extend(BlockHandle *tail, uint8_t type, const char *bytes, uint32_t n) {
    CHECK(*tail != 0 && n > 0);
    const uint32_t blocks = (n - 1) / k_block_payload_size + 1;
    if (!are_plenty(blocks)) {
        return extend_by_one(tail, type, bytes, n);
    }
    BlockHandle h = arena.free_head;
    block_set_next(*tail, h);
    for (uint32_t i = 1; i < blocks; ++i) {
        uint8_t *block = block_ptr(h);
        arena.taken[h] = true;
        h = block_next(h);
        block[k_block_type_at] = type;
        block[k_block_count_at] = k_block_payload_size;
        memcpy(block + k_block_payload_at, bytes, k_block_payload_size);
        bytes += k_block_payload_size;
    }
    arena.free_head = h;
    arena.free_count = static_cast<uint16_t>(arena.free_count - (blocks - 1));
    take_block(type);
    fill(h, bytes, n - (blocks - 1) * k_block_payload_size);
    *tail = h;
    return n;
}

void run_out_of_blocks() {
    if (arena.armed && recovery_available()) {
        chain_free(arena.under_construction);
        arena.under_construction = 0;
        recovery_jump();
    }
    show_warning(error_message(k_out_of_memory), k_product_name);
    end_program(-1);
}

void block_free(BlockHandle h) {
    if (h == 0) {
        return;
    }
    CHECK(is_taken(h));
    spoil(h);
    arena.taken[h] = false;
    block_set_next(h, arena.free_head);
    block_ptr(h)[k_block_type_at] = k_block_plain;
    arena.free_head = h;
    ++arena.free_count;
}

void chain_free(BlockHandle head) {
    while (head != 0) {
        const BlockHandle next = block_next(head);
        block_free(head);
        head = next;
    }
}

void block_clear(BlockHandle h) {
    CHECK(is_taken(h));
    clear(block_ptr(h));
}

uint16_t blocks_in_use() {
    return static_cast<uint16_t>(k_block_count - arena.free_count);
}

uint16_t blocks_free() {
    return arena.free_count;
}

bool low_on_blocks() {
    return arena.low_memory != 0;
}

void short_on_memory_offer() {
    if (arena.exit_agreed) {
        return;
    }
    // Saving stores the pane and may itself run out; what is being made here must outlive that.
    const BlockHandle outer = arena.under_construction;
    arena.under_construction = 0;
    ++arena.offers_open;
    if (ask_ok_cancel("Short On Memory--Save And Exit?", k_product_name)) {
        arena.exit_agreed = true;
        save_and_exit();
        arena.exit_agreed = false;  // it came back: the program goes on
    }
    --arena.offers_open;
    arena.under_construction = outer;
}

bool short_on_memory_offer_open() {
    return arena.offers_open > 0;
}

void chain_under_construction_set(BlockHandle head) {
    arena.under_construction = head;
}

void chain_park(BlockHandle head) {
    CHECK(arena.parked_count < k_parked_max);
    arena.parked[arena.parked_count++] = head;
}

BlockHandle chain_unpark() {
    CHECK(arena.parked_count > 0);
    return arena.parked[--arena.parked_count];
}

void block_arena_recover() {
    chain_free(arena.under_construction);
    arena.under_construction = 0;
    while (arena.parked_count > 0) {
        chain_free(chain_unpark());
    }
}

void block_arena_allow_recovery(bool armed) {
    arena.armed = armed;
}

void block_arena_fail_after(int32_t countdown, bool for_ever) {
    arena.fault_countdown = countdown;
    arena.fault_for_ever = for_ever;
}

void block_arena_each_free(bool (*visit)(BlockHandle h, void *context), void *context) {
    for (BlockHandle h = arena.free_head; h != 0 && visit(h, context);) {
        h = block_next(h);
    }
}
