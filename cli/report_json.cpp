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

namespace {

using Json = nlohmann::ordered_json;

std::string name_of(CellHandle cell) {
    return text_bytes(cell_name(cell));
}

Json cells_that_name(CellHandle cell) {
    Json names = Json::array();
    const int32_t number = cell_number_of(cell);
    for (CellHandle from = first_live_cell(); from != 0; from = next_live_cell(from)) {
        if (link_list_names(cell_out_pointers(from), number)) {
            names.push_back(name_of(from));
        }
    }
    return names;
}

Json cells_named_by(CellHandle cell) {
    Json names = Json::array();
    const BlockHandle list = cell_out_pointers(cell);
    for (const LinkEntry *entry = link_list_first(list);
         entry != nullptr && entry->kind != k_link_end; entry = link_list_next(list)) {
        const CellHandle target = cell_by_number(link_target(entry));
        if (target != 0) {
            names.push_back(name_of(target));
        }
    }
    return names;
}

void print_links_of(const std::string &file, CellHandle cell) {
    const bool in = option_rtype() == k_report_inptr;
    print_json({{"file", file},
                {"cell", name_of(cell)},
                {in ? "in" : "out", in ? cells_that_name(cell) : cells_named_by(cell)}});
}

// The same cells as the report's, in its order.
void print_covered(const std::string &file) {
    if (option_rall() != 0) {
        for (CellHandle cell = first_live_cell(); cell != 0; cell = next_live_cell(cell)) {
            print_links_of(file, cell);
        }
    } else if (report_selection_count() == 0) {
        print_links_of(file, current_cell());
    } else {
        for (uint32_t i = 0; i < report_selection_count(); ++i) {
            print_links_of(file, report_selection_at(i));
        }
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
