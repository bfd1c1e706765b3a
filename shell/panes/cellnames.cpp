#include "shell/panes/cellnames.h"

#include "core/names.h"
#include "core/text.h"
#include "shell/base/buffer.h"
#include "web/index.h"

#include <cstring>
#include <utility>

constexpr uint32_t k_first_size = 4096;

struct NameList {
    Buffer buffer;
    uint32_t length;  // without the terminator
};

static struct Cellnames {
    NameList current;
    NameList next;  // being built; then the two change places
} names;

namespace {

bool make_room(NameList *list, uint32_t size) {
    if (size <= list->buffer.size) {
        return true;
    }
    const uint32_t doubled =
        list->buffer.size < k_first_size ? k_first_size : list->buffer.size * 2;
    return buffer_reserve(&list->buffer, doubled < size ? size : doubled) != nullptr;
}

// A record that is no cell leaves a blank.
bool append_cell(NameList *list, CellHandle cell) {
    if (!make_room(list, list->length + k_cellname_max + 2)) {
        return false;
    }
    char *at = list->buffer.bytes + list->length;
    const uint32_t count =
        is_live_cell(cell) ? text_copy_out(at, cell_name(cell), k_cellname_max) : 0;
    at[count] = ' ';
    list->length += count + 1;
    return true;
}

bool build(NameList *list) {
    list->length = 0;
    if (!make_room(list, 1)) {
        return false;
    }
    const CellHandle root = index_root();
    for (CellHandle cell = index_first(root); cell != 0; cell = index_next(cell)) {
        if (!append_cell(list, cell)) {
            return false;
        }
    }
    if (list->length > 0) {
        --list->length;
    }
    list->buffer.bytes[list->length] = 0;
    return true;
}

bool same(const NameList &a, const NameList &b) {
    return a.buffer.bytes != nullptr && a.length == b.length &&
           memcmp(a.buffer.bytes, b.buffer.bytes, a.length) == 0;
}

}  // namespace

const char *cellnames_list() {
    return names.current.buffer.bytes != nullptr ? names.current.buffer.bytes : "";
}

bool cellnames_rebuild() {
    if (!build(&names.next) || same(names.current, names.next)) {
        return false;
    }
    std::swap(names.current, names.next);
    return true;
}
