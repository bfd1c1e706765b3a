#include "cli/browse/list.h"

#include "cli/note.h"
#include "cli/shown.h"
#include "web/index.h"

#include <algorithm>

static struct BrowseList {
    std::vector<CellHandle> items;
    std::vector<CellHandle> shown;
    std::string filter;
    size_t chosen = 0;
    size_t longest = 0;  // bytes of a name
} list;

namespace {

std::string name_of(CellHandle cell) {
    return text_bytes(cell_name(cell));
}

bool passes(CellHandle cell, const std::string &folded) {
    return folded_name(name_of(cell)).find(folded) != std::string::npos;
}

void apply_filter() {
    const std::string folded = folded_name(list.filter);
    list.shown.clear();
    list.longest = 0;
    for (const CellHandle cell : list.items) {
        list.longest = std::max(list.longest, name_of(cell).size());
        if (passes(cell, folded)) {
            list.shown.push_back(cell);
        }
    }
    list_choose(list.chosen);
}

// The place of the first name that begins with the filter, else 0.
size_t best_of_shown() {
    const std::string folded = folded_name(list.filter);
    const auto found = std::find_if(list.shown.begin(), list.shown.end(), [&](CellHandle cell) {
        return folded_name(name_of(cell)).compare(0, folded.size(), folded) == 0;
    });
    return found != list.shown.end() ? static_cast<size_t>(found - list.shown.begin()) : 0;
}

}  // namespace

void list_fill() {
    list.items.clear();
    for (CellHandle cell = first_live_cell(); cell != 0; cell = next_live_cell(cell)) {
        list.items.push_back(cell);
        cell_set_list_item(cell, cell);
    }
    apply_filter();
}

void list_add(CellHandle cell) {
    const auto place = std::find_if(list.items.begin(), list.items.end(), [&](CellHandle item) {
        return compare_names(name_of(item), name_of(cell)) > 0;
    });
    list.items.insert(place, cell);
    cell_set_list_item(cell, cell);
    apply_filter();
}

void list_clear() {
    list.items.clear();
    apply_filter();
}

void list_remove(CellHandle cell) {
    list.items.erase(std::remove(list.items.begin(), list.items.end(), cell), list.items.end());
    apply_filter();
}

const std::vector<CellHandle> &list_shown() {
    return list.shown;
}

void list_set_filter(std::string filter) {
    list.filter = std::move(filter);
    apply_filter();
    if (!list.filter.empty()) {
        list.chosen = best_of_shown();
    }
}

const std::string &list_filter() {
    return list.filter;
}

size_t list_chosen() {
    return list.chosen;
}

void list_choose(size_t item) {
    list.chosen = list.shown.empty() ? 0 : std::min(item, list.shown.size() - 1);
}

void list_choose_cell(CellHandle cell) {
    const auto found = std::find(list.shown.begin(), list.shown.end(), cell);
    if (found != list.shown.end()) {
        list.chosen = static_cast<size_t>(found - list.shown.begin());
    }
}

int list_columns() {
    return static_cast<int>(list.longest);
}
