#include "web/trail.h"

#include "core/check.h"
#include "core/host_view.h"
#include "web/changed.h"
#include "web/index.h"

#include <cstring>

constexpr uint8_t k_ring_slots = 32;  // one stays empty

struct Ring {
    CellHandle slots[k_ring_slots];
    uint8_t head;  // the slot to write next
    uint8_t tail;  // the oldest entry
};

static struct Trail {
    Ring back;
    Ring forward;
    uint8_t cursor;
    CellHandle current;
    CellHandle list_position;
} trail;

namespace {

uint8_t after(uint8_t i) {
    return static_cast<uint8_t>((i + 1) & (k_ring_slots - 1));
}

uint8_t before(uint8_t i) {
    return static_cast<uint8_t>((i - 1) & (k_ring_slots - 1));
}

bool is_live_or_none(CellHandle cell) {
    return cell == 0 || is_live_cell(cell);
}

// Whether a slot lies between the oldest entry and the slot to write next, which counts.
bool holds(const Ring *ring, uint8_t slot) {
    const uint8_t entries = (ring->head - ring->tail) & (k_ring_slots - 1);
    return ((slot - ring->tail) & (k_ring_slots - 1)) <= entries;
}

void put(Ring *ring, CellHandle cell) {
    ring->slots[ring->head] = cell;
    ring->head = after(ring->head);
}

// An entry is not repeated right behind itself, except where the ring is full.
void ring_push(Ring *ring, CellHandle cell) {
    CHECK(is_live_or_none(cell));
    const bool empty = ring->head == ring->tail;
    const bool full = after(ring->head) == ring->tail;
    if (full) {
        ring->tail = after(ring->tail);
    } else if (!empty && ring->slots[before(ring->head)] == cell) {
        return;
    }
    put(ring, cell);
}

CellHandle ring_pop(Ring *ring) {
    if (ring->head == ring->tail) {
        return 0;
    }
    ring->head = before(ring->head);
    return ring->slots[ring->head];
}

void ring_forget(Ring *ring, CellHandle cell) {
    uint8_t i = ring->tail;
    while (i != ring->head) {
        if (ring->slots[i] != cell) {
            i = after(i);
            continue;
        }
        for (uint8_t j = i; after(j) != ring->head; j = after(j)) {
            ring->slots[j] = ring->slots[after(j)];
        }
        ring->head = before(ring->head);
    }
}

uint32_t ring_entries(const Ring *ring, CellHandle *out) {
    uint32_t count = 0;
    for (uint8_t i = ring->tail; i != ring->head; i = after(i)) {
        out[count++] = ring->slots[i];
    }
    return count;
}

}  // namespace

void trail_reset() {
    memset(&trail.back, 0, sizeof trail.back);
    memset(&trail.forward, 0, sizeof trail.forward);
    trail.list_position = 0;
    cell_list_clear();
    trail.current = index_root();
    cell_list_fill();
}

void trail_push(CellHandle cell) {
    ring_push(&trail.back, cell);
}

CellHandle trail_pop() {
    if (trail.back.head == trail.back.tail) {
        return 0;
    }
    forward_push(trail.current);
    return ring_pop(&trail.back);
}

void trail_walk_start() {
    trail.cursor = trail.back.head;
}

CellHandle trail_walk_next() {
    if (trail.cursor == trail.back.tail) {
        return 0;
    }
    CHECK(holds(&trail.back, trail.cursor));
    trail.cursor = before(trail.cursor);
    return trail.back.slots[trail.cursor];
}

void trail_forget(CellHandle cell) {
    ring_forget(&trail.back, cell);
}

void forward_push(CellHandle cell) {
    ring_push(&trail.forward, cell);
}

CellHandle forward_pop() {
    return ring_pop(&trail.forward);
}

void forward_forget(CellHandle cell) {
    ring_forget(&trail.forward, cell);
}

void forward_clear() {
    while (forward_pop() != 0) {
    }
}

CellHandle current_cell() {
    return trail.current;
}

void current_cell_reset(CellHandle cell) {
    CHECK(is_live_or_none(cell));
    trail.current = cell;
}

void set_current(CellHandle cell) {
    if (trail.current != 0 && trail.current != cell) {
        store_current_text();
    }
    set_current_unstored(cell);
}

void set_current_unstored(CellHandle cell) {
    CHECK(is_live_or_none(cell));
    trail.current = cell;
    refresh_current_view();
}

void set_current_and_select(CellHandle cell) {
    set_current(cell);
    cell_list_select_current();
}

CellHandle list_position() {
    return trail.list_position;
}

void list_position_set(CellHandle node) {
    CHECK(node == 0 || is_node(node));
    trail.list_position = node;
}

void store_current_text() {
    const bool changed = web_changed();
    store_text_pane(1);
    set_web_changed(changed);
}

uint32_t trail_entries(CellHandle *out) {
    return ring_entries(&trail.back, out);
}

uint32_t forward_entries(CellHandle *out) {
    return ring_entries(&trail.forward, out);
}
