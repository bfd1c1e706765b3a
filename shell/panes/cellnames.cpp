#include "shell/panes/cellnames.h"

#include "core/text.h"
#include "web/cells.h"

#include <cstdlib>
#include <cstring>
#include <utility>

constexpr uint32_t k_first_size = 4096;

struct NameList {
    char *bytes;
    uint32_t size;
    uint32_t length;  // without the terminator
};

static struct Cellnames {
    NameList current;
    NameList next;  // being built; then the two change places
} names;

namespace {

bool make_room(NameList *list, uint32_t size) {
    if (size <= list->size) {
        return true;
    }
    uint32_t grown = list->size < k_first_size ? k_first_size : list->size * 2;
    grown = grown < size ? size : grown;
    char *bytes = static_cast<char *>(realloc(list->bytes, grown));
    if (bytes == nullptr) {
        return false;
    }
    list->bytes = bytes;
    list->size = grown;
    return true;
}

// A record that is no cell leaves a blank.
bool append_cell(NameList *list, CellHandle cell) {
    if (!make_room(list, list->length + k_cellname_max + 2)) {
        return false;
    }
    char *at = list->bytes + list->length;
    uint32_t count = is_live_cell(cell) ? text_copy_out(at, cell_name(cell), k_cellname_max) : 0;
    at[count] = ' ';
    list->length += count + 1;
    return true;
}

bool build(NameList *list) {
    list->length = 0;
    if (!make_room(list, 1)) {
        return false;
    }
    CellHandle root = index_root();
    for (CellHandle cell = index_first(root); cell != 0; cell = index_next(cell)) {
        if (!append_cell(list, cell)) {
            return false;
        }
    }
    if (list->length > 0) {
        --list->length;
    }
    list->bytes[list->length] = 0;
    return true;
}

bool same(const NameList &a, const NameList &b) {
    return a.bytes != nullptr && a.length == b.length && memcmp(a.bytes, b.bytes, a.length) == 0;
}

}  // namespace

const char *cellnames_list() {
    return names.current.bytes != nullptr ? names.current.bytes : "";
}

bool cellnames_rebuild() {
    if (!build(&names.next) || same(names.current, names.next)) {
        return false;
    }
    std::swap(names.current, names.next);
    return true;
}
