#include "tests/engine/checker.h"

#include "core/block_arena.h"
#include "core/text.h"
#include "web/cell_numbers.h"
#include "web/index.h"
#include "web/trail.h"
#include "web/value.h"

#include <cstring>

namespace {

constexpr const char *k_node = "a node";

static struct Check {
    const char *uses[k_block_count + 1];  // what a block was met as; null: not met
    CellHandle nodes[k_block_count + 1];  // of the index, in its order
    uint32_t node_count;
    uint32_t free_length;
    std::string fault;  // the first; what follows from it is not reported
} check;

bool expect(bool sound, const char *fault, uint32_t where, const char *use = "") {
    if (!sound && check.fault.empty()) {
        check.fault = std::string(fault) + " " + use + ": " + std::to_string(where);
    }
    return sound;
}

bool claim(BlockHandle h, const char *use) {
    if (!expect(h != 0 && h <= k_block_count, "no such block, yet it is", h, use) ||
        !expect(check.uses[h] == nullptr, "a block on two chains is also", h, use)) {
        return false;
    }
    check.uses[h] = use;
    return true;
}

// Every block of a chain.
bool claim_chain(BlockHandle h, uint8_t type, const char *use) {
    for (; h != 0; h = block_next(h)) {
        if (!claim(h, use) ||
            !expect(block_ptr(h)[k_block_type_at] == type, "wrong type of", h, use)) {
            return false;
        }
        expect(type != k_block_text || block_used(h) <= k_text_block_chars, "too full:", h, use);
    }
    return true;
}

void claim_value(BlockHandle value) {
    if (claim_chain(value, k_block_text, "a value")) {
        for (; value != 0; value = block_next(value)) {
            claim_chain(val_text(value), k_block_text, "a value's text");
        }
    }
}

// Header block, then entry blocks linked both ways.
void claim_links(BlockHandle list) {
    constexpr uint32_t k_first_block_at = 7;
    constexpr uint32_t k_previous_at = 4;
    if (list == 0 || !claim_chain(list, k_block_link, "a link list")) {
        return;
    }
    BlockHandle previous = 0;
    BlockHandle h = block_get16(list, k_first_block_at);
    for (claim_chain(h, k_block_link, "link entries"); h != 0; h = block_next(h)) {
        if (!expect(block_get16(h, k_previous_at) == previous, "wrong predecessor of", h)) {
            return;
        }
        previous = h;
    }
}

bool claim_node(CellHandle node) {
    if (!claim(node, k_node) ||
        !expect(block_ptr(node)[k_block_type_at] == k_block_node, "wrong type of", node, k_node)) {
        return false;
    }
    claim_chain(cell_name(node), k_block_text, "a name");
    if (cell_kind(node) == k_cell_live) {
        claim_chain(cell_text(node), k_block_text, "a cell's text");
        claim_chain(cell_script(node), k_block_text, "a script");
        claim_value(cell_value(node));
        claim_chain(cell_view_state(node), k_block_plain, "an auxiliary block");
        claim_chain(cell_spare_block(node), k_block_plain, "an auxiliary block");
        claim_links(cell_out_pointers(node));
        claim_links(cell_second_links(node));
    }
    return true;
}

void walk_index(CellHandle node, CellHandle parent) {
    if (node != 0 && claim_node(node)) {
        expect(node_parent(node) == parent, "wrong parent of node", node);
        walk_index(node_left(node), node);
        check.nodes[check.node_count++] = node;
        walk_index(node_right(node), node);
    }
}

bool is_live_node(CellHandle h) {
    return h != 0 && h <= k_block_count && check.uses[h] == k_node && is_live_cell(h);
}

void check_order_and_numbers() {
    int32_t number = 0;
    for (uint32_t i = 0; i < check.node_count; ++i) {
        CellHandle node = check.nodes[i];
        expect(i == 0 || text_compare(cell_name(check.nodes[i - 1]), cell_name(node)) < 0,
               "out of order: node", node);
        if (is_live_cell(node) && number < static_cast<int32_t>(k_cell_number_max)) {
            expect(cell_by_number(number) == node && cell_numbered(node), "wrong number of", node);
            ++number;
        }
    }
    expect(cell_by_number(number) == 0, "a number of no live cell", 0);
}

void check_ring(uint32_t (*entries)(CellHandle *), const char *ring) {
    CellHandle cells[31];
    for (uint32_t count = entries(cells); count-- > 0;) {
        expect(is_live_node(cells[count]), "no live cell is named by", cells[count], ring);
    }
}

bool claim_free(BlockHandle h, void *) {
    ++check.free_length;
    return claim(h, "free");
}

}  // namespace

std::string check_engine(uint32_t lost_blocks) {
    memset(check.uses, 0, sizeof check.uses);
    check.fault.clear();
    check.free_length = check.node_count = 0;
    block_arena_each_free(claim_free, nullptr);
    expect(check.free_length == blocks_free(), "the free chain is not as long as", blocks_free());
    walk_index(index_root(), 0);
    if (!check.fault.empty()) {
        return check.fault;  // nothing else can be trusted
    }
    check_order_and_numbers();
    check_ring(trail_entries, "the trail");
    check_ring(forward_entries, "the forward ring");
    expect(index_root() == 0 ? current_cell() == 0 : is_live_node(current_cell()),
           "not live: current cell", current_cell());
    uint32_t lost = 0;
    for (uint32_t h = 1; h <= k_block_count; ++h) {
        lost += check.uses[h] == nullptr;
    }
    expect(lost == lost_blocks, "blocks that belong to nothing", lost);
    return check.fault;
}
