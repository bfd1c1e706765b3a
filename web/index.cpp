#include "web/index.h"

#include "core/check.h"
#include "core/text.h"

static struct WebIndex { CellHandle root; } web_index;

namespace {

// The node where the search for a name ended: the one found, or the one below which it belongs.
// `comparison` is the name's order against that node's name.
struct Descent {
    CellHandle node;
    int comparison;
};

// Goes down to where the node belongs, stopping at an equal name if asked to.
Descent descend(CellHandle node, CellHandle root, bool stop_at_equal) {
    CHECK(is_node(node));
    const BlockHandle name = cell_name(node);
    Descent at = {0, 0};
    for (CellHandle next = root; next != 0;) {
        at.node = next;
        at.comparison = text_compare(name, cell_name(next));
        if (at.comparison == 0 && stop_at_equal) {
            break;
        }
        next = at.comparison < 0 ? node_left(next) : node_right(next);
    }
    return at;
}

void hang(CellHandle node, Descent at, CellHandle *root) {
    node_set_left(node, 0);
    node_set_right(node, 0);
    node_set_parent(node, at.node);
    if (at.node == 0) {
        *root = node;
    } else if (at.comparison < 0) {
        node_set_left(at.node, node);
    } else {
        node_set_right(at.node, node);
    }
}

// First node of a post-order walk of this subtree.
CellHandle deepest_first(CellHandle node) {
    for (;;) {
        const CellHandle child = node_left(node) != 0 ? node_left(node) : node_right(node);
        if (child == 0) {
            return node;
        }
        node = child;
    }
}

// The first live cell from the node on, in one direction.
CellHandle live_from(CellHandle node, CellHandle (*neighbour)(CellHandle)) {
    while (node != 0 && !is_live_cell(node)) {
        node = neighbour(node);
    }
    return node;
}

}  // namespace

CellHandle index_find(CellHandle root, const char *name) {
    CellHandle node = root;
    while (node != 0) {
        const int comparison = text_compare_cstring(cell_name(node), name);
        if (comparison == 0) {
            break;
        }
        node = comparison < 0 ? node_right(node) : node_left(node);
    }
    return node;
}

CellHandle index_find_text(CellHandle root, BlockHandle name) {
    CellHandle node = root;
    while (node != 0) {
        const int comparison = text_compare(name, cell_name(node));
        if (comparison == 0) {
            break;
        }
        node = comparison < 0 ? node_left(node) : node_right(node);
    }
    return node;
}

CellHandle index_insert(BlockHandle name, CellHandle *root, uint16_t kind) {
    chain_park(name);
    const CellHandle node = block_alloc(k_block_node);
    chain_unpark();
    cell_set_name(node, name);
    cell_set_kind(node, kind);
    index_link(node, root);
    return node;
}

void index_link(CellHandle node, CellHandle *root) {
    hang(node, descend(node, *root, false), root);
}

CellHandle index_link_new(CellHandle node, CellHandle *root) {
    const Descent at = descend(node, *root, true);
    if (at.node != 0 && at.comparison == 0) {
        return at.node;
    }
    hang(node, at, root);
    return 0;
}

CellHandle index_find_or_insert(const char *name, CellHandle *root, uint16_t kind) {
    const CellHandle node = index_find(*root, name);
    if (node == 0) {
        return index_insert(text_from_cstring(name), root, kind);
    }
    if (cell_kind(node) != k_cell_deleted) {
        return 0;
    }
    cell_set_kind(node, kind);
    return node;
}

CellHandle index_first(CellHandle node) {
    while (node != 0 && node_left(node) != 0) {
        node = node_left(node);
    }
    return node;
}

CellHandle index_last(CellHandle node) {
    while (node != 0 && node_right(node) != 0) {
        node = node_right(node);
    }
    return node;
}

CellHandle index_next(CellHandle node) {
    if (node == 0) {
        return 0;
    }
    CHECK(is_node(node));
    if (node_right(node) != 0) {
        return index_first(node_right(node));
    }
    CellHandle parent = node_parent(node);
    while (parent != 0 && node_right(parent) == node) {
        node = parent;
        parent = node_parent(node);
    }
    return parent;
}

CellHandle index_prev(CellHandle node) {
    if (node == 0) {
        return 0;
    }
    CHECK(is_node(node));
    if (node_left(node) != 0) {
        return index_last(node_left(node));
    }
    CellHandle parent = node_parent(node);
    while (parent != 0 && node_left(parent) == node) {
        node = parent;
        parent = node_parent(node);
    }
    return parent;
}

void index_walk(CellHandle root, void (*function)(CellHandle node)) {
    if (root == 0) {
        return;
    }
    CellHandle node = deepest_first(root);
    for (;;) {
        CHECK(is_node(node));
        CellHandle next = 0;
        if (node != root) {
            next = node_parent(node);
            const CellHandle sibling = node_right(next);
            if (node_left(next) == node && sibling != 0) {
                next = deepest_first(sibling);
            }
        }
        function(node);
        if (next == 0) {
            return;
        }
        node = next;
    }
}

CellHandle index_root() {
    return web_index.root;
}

CellHandle *index_root_address() {
    return &web_index.root;
}

CellHandle first_live_cell() {
    return live_from(index_first(web_index.root), index_next);
}

CellHandle last_live_cell() {
    return live_from(index_last(web_index.root), index_prev);
}

CellHandle next_live_cell(CellHandle cell) {
    return live_from(index_next(cell), index_next);
}

void node_free(CellHandle node) {
    chain_free(cell_name(node));
    block_free(node);
}
