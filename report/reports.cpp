#include "report/reports.h"

#include "core/busy.h"
#include "core/check.h"
#include "core/host_view.h"
#include "core/strings.h"
#include "report/output.h"
#include "web/cell_numbers.h"
#include "web/index.h"
#include "web/link_list.h"
#include "web/links.h"
#include "web/options.h"
#include "web/report_selection.h"
#include "web/trail.h"

static struct Reports {
    ErrorCode result;
    char format[k_rfmt_max + 1];  // the copy that a formatted report walks through
} reports;

namespace {

// Writes one substitution sequence: the character behind a backslash.
ErrorCode substitute(char c, CellHandle cell) {
    switch (c) {
    case 'n': {
        const ErrorCode code = output_char('\r');
        return code == 0 ? output_char('\n') : code;
    }
    case 'N':
        return output_text(cell_name(cell));
    case 'T':
        return output_text(cell_text(cell));
    default:
        return output_char(c);
    }
}

// A line of its own: the prefix and a cell's name.
ErrorCode name_line(const char *prefix, CellHandle cell) {
    ErrorCode code = output_newline();
    if (code == 0) {
        code = output_string(prefix);
    }
    return code == 0 ? output_text(cell_name(cell)) : code;
}

ErrorCode report_cell(CellHandle cell) {
    CHECK(is_live_cell(cell));
    switch (option_rtype()) {
    case k_report_fmt:
        return report_formatted_cell(option_rfmt(), cell);
    case k_report_inptr:
        return report_in_pointers(cell);
    case k_report_outptr:
        return report_out_pointers(cell);
    default:
        return 0;
    }
}

bool needs_links() {
    return option_rtype() == k_report_inptr || option_rtype() == k_report_outptr;
}

// In pointers are found in every cell's list; out pointers only in the reported cells' own.
bool needs_all_links() {
    return option_rtype() == k_report_inptr;
}

ErrorCode run_chosen_report() {
    if (option_rtype() == k_report_trail) {
        return report_trail();
    }
    if (option_rall() != 0) {
        return report_all_cells();
    }
    return report_selection_count() == 0 ? report_current_cell() : report_selected_cells();
}

}  // namespace

int report_run() {
    if (refused_while_busy()) {
        return k_output_in_use;
    }
    output_clear_stop();
    store_text_pane(1);
    if (option_rall() == 0) {
        report_selection_build(selected_text());
        selected_text_free();
    }
    reports.result = run_chosen_report();
    const ErrorCode closing = output_close();
    if (reports.result == 0) {
        reports.result = closing;
    }
    store_current_text();
    refresh_current_view();
    output_clear_stop();
    return 0;
}

ErrorCode report_result() {
    return reports.result;
}

ErrorCode report_formatted_cell(const char *format, CellHandle cell) {
    copy_string(reports.format, format, k_rfmt_max);
    for (const char *p = reports.format; *p != 0; ++p) {
        ErrorCode code = 0;
        if (*p != '\\') {
            code = output_char(*p);
        } else if (p[1] != 0) {
            code = substitute(*++p, cell);
        }
        if (code != 0) {
            return code;
        }
    }
    return 0;
}

ErrorCode report_out_pointers(CellHandle cell) {
    ErrorCode code = name_line("", cell);
    const BlockHandle list = cell_out_pointers(cell);
    LinkEntry *entry = code == 0 ? link_list_first(list) : nullptr;
    while (entry != nullptr && entry->kind != k_link_end) {
        const CellHandle target = cell_by_number(link_target(entry));
        if (target != 0) {
            code = name_line("    >", target);
            if (code != 0) {
                return code;
            }
        }
        entry = link_list_next(list);
    }
    return code;
}

ErrorCode report_in_pointers(CellHandle cell) {
    ErrorCode code = name_line("", cell);
    const int32_t number = cell_number_of(cell);
    for (CellHandle from = first_live_cell(); from != 0 && code == 0 && !output_aborted();
         from = next_live_cell(from)) {
        if (link_list_names(cell_out_pointers(from), number)) {
            code = name_line("    <", from);
        }
    }
    return code;
}

ErrorCode report_trail() {
    ErrorCode code = output_newline();
    if (code == 0) {
        code = output_string("Trail:");
    }
    trail_walk_start();
    for (CellHandle cell = trail_walk_next(); cell != 0 && code == 0; cell = trail_walk_next()) {
        code = name_line("    ", cell);
    }
    return code;
}

ErrorCode report_all_cells() {
    if (needs_links()) {
        links_build_all();
    }
    ErrorCode code = 0;
    for (CellHandle cell = first_live_cell(); cell != 0 && code == 0 && !output_aborted();
         cell = next_live_cell(cell)) {
        code = report_cell(cell);
    }
    if (needs_links()) {
        links_drop_all();
    }
    return code;
}

ErrorCode report_selected_cells() {
    if (needs_all_links()) {
        links_build_all();
    } else if (needs_links()) {
        links_build_selection();
    }
    ErrorCode code = 0;
    for (uint32_t i = 0; i < report_selection_count() && code == 0 && !output_aborted(); ++i) {
        code = report_cell(report_selection_at(i));
    }
    if (needs_all_links()) {
        links_drop_all();
    } else if (needs_links()) {
        links_drop_selection();
    }
    return code;
}

ErrorCode report_current_cell() {
    const CellHandle cell = current_cell();
    if (cell == 0) {
        return 0;
    }
    if (needs_all_links()) {
        links_build_all();
    } else if (needs_links()) {
        links_build(cell);
    }
    const ErrorCode code = report_cell(cell);
    if (needs_all_links()) {
        links_drop_all();
    } else if (needs_links()) {
        links_drop(cell);
    }
    return code;
}
