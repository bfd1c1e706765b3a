#include "file/written_names.h"

#include "core/names.h"
#include "core/text.h"
#include "web/index.h"

// All numbers have as many digits and each is tried once, so no two numbered names are alike. A
// cell with so long a name has three blocks and uses up two numbers at most: the one that it gets,
// and one that ends its name already.
constexpr uint32_t k_digits = 4;
constexpr uint32_t k_stem = k_cellname_max - k_digits;
static_assert(k_block_count / 3 * 2 < 9999);

struct CutName {
    char text[k_cellname_max + 1];
};

static struct WrittenNames {
    BlockHandle before;  // name of the cell before; 0 at the front
    uint32_t number;     // given last
    CutName name;
} names;

namespace {

// In the order of the index.
int compare(const CutName *x, const CutName *y) {
    for (uint32_t i = 0;; ++i) {
        auto a = static_cast<uint8_t>(fold_char(x->text[i]));
        auto b = static_cast<uint8_t>(fold_char(y->text[i]));
        if (a != b || a == 0) {
            return a - b;
        }
    }
}

CutName cut(BlockHandle name) {
    CutName made;
    text_copy_out(made.text, name, k_cellname_max);
    return made;
}

// Names cut short are in the order of the whole ones, so the tree leads to them.
bool some_cell_has(const CutName *name) {
    CellHandle node = index_root();
    while (node != 0) {
        const CutName other = cut(cell_name(node));
        const int comparison = compare(name, &other);
        if (comparison == 0) {
            return true;
        }
        node = comparison < 0 ? node_left(node) : node_right(node);
    }
    return false;
}

void put_number(CutName *name, uint32_t number) {
    for (uint32_t i = k_digits; i > 0; --i) {
        name->text[k_stem + i - 1] = static_cast<char>('0' + number % 10);
        number /= 10;
    }
}

bool begins_alike(BlockHandle name, const CutName *as) {
    const CutName other = cut(name);
    return compare(as, &other) == 0;
}

}  // namespace

void written_names_begin() {
    names.before = 0;
    names.number = 0;
}

const char *written_name(CellHandle cell) {
    const BlockHandle name = cell_name(cell);
    const BlockHandle before = names.before;
    names.before = name;
    if (block_next(name) == 0 || text_size(name) <= k_cellname_max) {
        return nullptr;
    }
    names.name = cut(name);
    if (begins_alike(before, &names.name)) {
        do {
            put_number(&names.name, ++names.number);
        } while (some_cell_has(&names.name));
    }
    return names.name.text;
}
