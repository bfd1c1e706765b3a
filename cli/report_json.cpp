#include "cli/report_json.h"

#include "cli/print.h"
#include "cli/shown.h"
#include "core/host_view.h"
#include "web/cell_numbers.h"
#include "web/cells.h"
#include "web/index.h"
#include "web/link_list.h"
#include "web/links.h"
#include "web/options.h"
#include "web/report_selection.h"
#include "web/trail.h"

#include <nlohmann/json.hpp>

#include <unordered_map>
#include <vector>

namespace {

using Json = nlohmann::ordered_json;

std::string name_of(CellHandle cell) {
    return text_bytes(cell_name(cell));
}

// By the number of a cell: those that name it, in the web's order.
using Sources = std::unordered_map<int32_t, std::vector<CellHandle>>;

template <typename Function> void for_targets(CellHandle cell, Function function) {
    const BlockHandle list = cell_out_pointers(cell);
    for (const LinkEntry *entry = link_list_first(list);
         entry != nullptr && entry->kind != k_link_end; entry = link_list_next(list)) {
        function(link_target(entry));
    }
}

// All cells' at once, because each list is gone through but once then. A list may name a cell more
// than once; -1 is the number of any number of cells.
Sources all_sources() {
    Sources sources;
    for (CellHandle from = first_live_cell(); from != 0; from = next_live_cell(from)) {
        for_targets(from, [&](int32_t number) {
            std::vector<CellHandle> &cells = sources[number];
            if (number >= 0 && (cells.empty() || cells.back() != from)) {
                cells.push_back(from);
            }
        });
    }
    return sources;
}

Json cells_that_name(const Sources &sources, CellHandle cell) {
    Json names = Json::array();
    const auto found = sources.find(cell_number_of(cell));
    if (found != sources.end()) {
        for (const CellHandle from : found->second) {
            names.push_back(name_of(from));
        }
    }
    return names;
}

Json cells_named_by(CellHandle cell) {
    Json names = Json::array();
    for_targets(cell, [&names](int32_t number) {
        const CellHandle target = cell_by_number(number);
        if (target != 0) {
            names.push_back(name_of(target));
        }
    });
    return names;
}

// The same cells as the report's, in its order.
std::vector<CellHandle> covered_cells() {
    std::vector<CellHandle> cells;
    if (option_rall() != 0) {
        for (CellHandle cell = first_live_cell(); cell != 0; cell = next_live_cell(cell)) {
            cells.push_back(cell);
        }
    } else if (report_selection_count() == 0) {
        cells.push_back(current_cell());
    } else {
        for (uint32_t i = 0; i < report_selection_count(); ++i) {
            cells.push_back(report_selection_at(i));
        }
    }
    return cells;
}

// Nothing here takes blocks.
void print_covered(const std::string &file) {
    const bool in = option_rtype() == k_report_inptr;
    const Sources sources = in ? all_sources() : Sources();
    for (const CellHandle cell : covered_cells()) {
        print_json(
            {{"file", file},
             {"cell", name_of(cell)},
             {in ? "in" : "out", in ? cells_that_name(sources, cell) : cells_named_by(cell)}});
    }
}

}  // namespace

bool is_report_on_links() {
    return option_rtype() == k_report_inptr || option_rtype() == k_report_outptr;
}

void print_links_json(const std::string &file) {
    if (option_rall() == 0) {
        report_selection_build(selected_text());
    }
    links_build_all();
    print_covered(file);
    links_drop_all();
}

void print_report_json(const std::string &file, const std::string &text) {
    print_json({{"file", file}, {"report", text}});
}
