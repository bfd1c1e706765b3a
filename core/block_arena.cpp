#include "core/block_arena.h"

#include "core/errors.h"
#include "core/host.h"
#include "core/recovery.h"

#include <cstring>

// Block 0 is never handed out and handle 10,000 is: the storage holds both.
uint8_t arena_blocks[(k_block_count + 1) * k_block_size];

namespace {

struct Arena {
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
} arena;

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

BlockHandle take_block(uint8_t type) {
    BlockHandle h = arena.free_head;
    block_ptr(h)[k_block_type_at] = type;
    arena.free_head = block_next(h);
    --arena.free_count;
    block_clear(h);
    if (arena.free_count < k_low_block_count) {
        arena.low_memory = 1;
        short_on_memory_offer();
    }
    return h;
}

}  // namespace

void block_arena_init() {
    arena.free_head = 1;
    arena.low_memory = 0;
    arena.free_count = k_block_count;
    arena.exit_agreed = false;
    arena.offers_open = 0;
    arena.parked_count = 0;
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
    if (arena.free_head == 0 || fault_due()) {
        run_out_of_blocks();
    }
    return take_block(type);
}

BlockHandle block_try_alloc(uint8_t type) {
    return arena.free_head == 0 || fault_due() ? 0 : take_block(type);
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
    block_set_next(h, arena.free_head);
    block_ptr(h)[k_block_type_at] = k_block_plain;
    arena.free_head = h;
    ++arena.free_count;
}

void chain_free(BlockHandle head) {
    while (head != 0) {
        BlockHandle next = block_next(head);
        block_free(head);
        head = next;
    }
}

void block_clear(BlockHandle h) {
    uint8_t *block = block_ptr(h);
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
    BlockHandle outer = arena.under_construction;
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
    arena.parked[arena.parked_count++] = head;
}

BlockHandle chain_unpark() {
    return arena.parked[--arena.parked_count];
}

void block_arena_recover() {
    chain_free(arena.under_construction);
    arena.under_construction = 0;
    while (arena.parked_count > 0) {
        chain_free(chain_unpark());
    }
}

void recovery_arm(bool armed) {
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
