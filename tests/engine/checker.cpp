#include "tests/engine/checker.h"

#include "core/block_arena.h"
#include "core/text.h"
#include "web/cells.h"
#include "web/links.h"
#include "web/trail.h"
#include "web/value.h"

#include <cstring>

namespace {

constexpr uint32_t k_ring_entries = 31;

// What a block was met as. The first fault found is kept; what follows from it is not reported.
struct Use {
    const char *what;  // null: not met
    CellHandle node;   // whose it is
};

static struct Check {
    Use uses[k_block_count + 1];
    CellHandle nodes[k_block_count + 1];  // of the index, in its order
    uint32_t node_count;
    CellHandle above[k_block_count + 1];  // nodes whose right side is still to be walked
    uint32_t free_length;
    std::string fault;
} check;

bool fail(const std::string &sentence) {
    if (check.fault.empty()) {
        check.fault = sentence;
    }
    return false;
}

std::string described(const Use &use) {
    std::string name = use.node == 0 ? "" : " of node " + std::to_string(use.node);
    return use.what + name;
}

// Called for every block, so that a sentence is only made when one is needed.
std::string block_name(BlockHandle h) {
    return "block " + std::to_string(h);
}

bool claim(BlockHandle h, const char *what, CellHandle node) {
    if (h == 0 || h > k_block_count) {
        return fail(block_name(h) + " does not exist but is " + described({what, node}));
    }
    if (check.uses[h].what != nullptr) {
        return fail(block_name(h) + " is " + described({what, node}) + " and " +
                    described(check.uses[h]));
    }
    check.uses[h] = {what, node};
    return true;
}

bool claim_typed(BlockHandle h, uint8_t type, const char *what, CellHandle node) {
    if (!claim(h, what, node)) {
        return false;
    }
    return block_ptr(h)[k_block_type_at] == type ||
           fail(block_name(h) + ", " + described({what, node}) + ", has type " +
                std::to_string(block_ptr(h)[k_block_type_at]));
}

bool claim_text(BlockHandle h, const char *what, CellHandle node) {
    for (; h != 0; h = block_next(h)) {
        if (!claim_typed(h, k_block_text, what, node)) {
            return false;
        }
        if (block_used(h) > k_text_block_chars) {
            return fail(block_name(h) + " has more characters than room");
        }
    }
    return true;
}

bool claim_value(BlockHandle h, CellHandle node) {
    for (; h != 0; h = block_next(h)) {
        if (!claim_typed(h, k_block_text, "a value", node) ||
            !claim_text(val_text(h), "a value's text", node)) {
            return false;
        }
    }
    return true;
}

bool claim_aux(BlockHandle h, CellHandle node) {
    return h == 0 || claim_typed(h, k_block_plain, "an auxiliary block", node);
}

// Header block, then entry blocks linked both ways.
bool claim_links(BlockHandle list, CellHandle node) {
    constexpr uint32_t k_first_block_at = 7;
    constexpr uint32_t k_last_block_at = 10;
    constexpr uint32_t k_previous_at = 4;
    if (list == 0) {
        return true;
    }
    if (!claim_typed(list, k_block_link, "a link list", node)) {
        return false;
    }
    BlockHandle previous = 0;
    for (BlockHandle h = block_get16(list, k_first_block_at); h != 0; h = block_next(h)) {
        if (!claim_typed(h, k_block_link, "link entries", node)) {
            return false;
        }
        if (block_get16(h, k_previous_at) != previous) {
            return fail("link block " + std::to_string(h) + " has the wrong predecessor");
        }
        previous = h;
    }
    return block_get16(list, k_last_block_at) == previous ||
           fail("a link list's last block is not the end of its chain");
}

bool claim_node(CellHandle node) {
    if (!claim_typed(node, k_block_node, "a node", node) ||
        !claim_text(cell_name(node), "the name", node)) {
        return false;
    }
    switch (cell_kind(node)) {
    case k_cell_live:
        return claim_text(cell_text(node), "the text", node) &&
               claim_text(cell_script(node), "the script", node) &&
               claim_value(cell_value(node), node) && claim_aux(cell_first_aux(node), node) &&
               claim_aux(cell_second_aux(node), node) &&
               claim_links(cell_out_pointers(node), node) &&
               claim_links(cell_second_links(node), node);
    case k_cell_value_entry:
        return claim_value(cell_text(node), node);
    case k_cell_deleted:
        return true;
    default:
        return fail("node " + std::to_string(node) + " has kind " +
                    std::to_string(cell_kind(node)));
    }
}

bool has_parent(CellHandle node, CellHandle parent) {
    return node == 0 || node_parent(node) == parent ||
           fail("node " + std::to_string(node) + " does not know its parent");
}

// In order, by parent-free means: the nodes whose left side is under way are kept aside.
bool walk_index() {
    uint32_t depth = 0;
    check.node_count = 0;
    CellHandle node = index_root();
    if (!has_parent(node, 0)) {
        return false;
    }
    while (node != 0 || depth > 0) {
        for (; node != 0; node = node_left(node)) {
            if (!claim_node(node) || !has_parent(node_left(node), node) ||
                !has_parent(node_right(node), node)) {
                return false;
            }
            check.above[depth++] = node;
        }
        node = check.above[--depth];
        check.nodes[check.node_count++] = node;
        node = node_right(node);
    }
    return true;
}

bool is_node(CellHandle h) {
    return h != 0 && h <= k_block_count && check.uses[h].what != nullptr && check.uses[h].node == h;
}

bool check_order() {
    for (uint32_t i = 1; i < check.node_count; ++i) {
        if (text_compare(cell_name(check.nodes[i - 1]), cell_name(check.nodes[i])) >= 0) {
            return fail("node " + std::to_string(check.nodes[i]) + " is out of order");
        }
    }
    return true;
}

bool check_numbers() {
    int32_t number = 0;
    for (uint32_t i = 0; i < check.node_count; ++i) {
        CellHandle node = check.nodes[i];
        bool numbered = is_live_cell(node) && number < static_cast<int32_t>(k_cell_number_max);
        if (numbered && (cell_by_number(number) != node || !cell_numbered(node))) {
            return fail("cell number " + std::to_string(number) + " is not that of node " +
                        std::to_string(node));
        }
        number += numbered ? 1 : 0;
    }
    return cell_by_number(number) == 0 || fail("a cell number names no live cell");
}

bool check_ring(uint32_t (*entries)(CellHandle *), const char *ring) {
    CellHandle cells[k_ring_entries];
    uint32_t count = entries(cells);
    for (uint32_t i = 0; i < count; ++i) {
        if (!is_node(cells[i]) || !is_live_cell(cells[i])) {
            return fail(std::string(ring) + " names block " + std::to_string(cells[i]) +
                        ", which is no live cell");
        }
    }
    return true;
}

bool check_current() {
    CellHandle current = current_cell();
    if (index_root() == 0 ? current != 0 : !is_node(current) || !is_live_cell(current)) {
        return fail("the current cell is not live");
    }
    return list_position() == 0 || is_node(list_position()) || fail("the list position is no node");
}

bool claim_free(BlockHandle h, void *) {
    ++check.free_length;
    return claim(h, "free", 0);
}

bool check_free_chain() {
    check.free_length = 0;
    block_arena_each_free(claim_free, nullptr);
    return check.fault.empty() &&
           (check.free_length == blocks_free() ||
            fail("the free chain has " + std::to_string(check.free_length) +
                 " blocks and the count says " + std::to_string(blocks_free())));
}

bool check_lost(uint32_t expected) {
    uint32_t lost = 0;
    BlockHandle example = 0;
    for (uint32_t h = 1; h <= k_block_count; ++h) {
        if (check.uses[h].what == nullptr) {
            ++lost;
            example = static_cast<BlockHandle>(h);
        }
    }
    return lost == expected ||
           fail(std::to_string(lost) + " blocks belong to nothing, among them " +
                std::to_string(example) + "; " + std::to_string(expected) + " should");
}

}  // namespace

std::string check_engine(uint32_t lost_blocks) {
    memset(check.uses, 0, sizeof check.uses);
    check.fault.clear();
    if (check_free_chain() && walk_index() && check_order() && check_numbers() &&
        check_ring(trail_entries, "the trail") && check_ring(forward_entries, "the forward ring") &&
        check_current()) {
        check_lost(lost_blocks);
    }
    return check.fault;
}
