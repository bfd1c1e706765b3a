#include "cli/commands.h"

#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/new_text.h"
#include "cli/shown.h"
#include "cli/web_file.h"
#include "cli/webs.h"
#include "core/errors.h"
#include "core/names.h"
#include "core/text.h"
#include "platform/program.h"
#include "report/output.h"
#include "report/reports.h"
#include "web/cell_text.h"
#include "web/cells.h"
#include "web/index.h"
#include "web/options.h"
#include "web/trail.h"

#include <cstring>

namespace {

// A web must leave this many blocks free to be read again.
constexpr uint32_t k_reading_reserve = 4;

int status_of(ErrorCode code) {
    switch (code) {
    case 0:
        return k_exit_done;
    case k_out_of_memory:
        return k_exit_memory;
    case k_aborted:
        return k_exit_refused;
    default:
        return k_exit_failed;
    }
}

int refuse(const char *message) {
    host_message(message);
    return k_exit_refused;
}

int misuse(const char *message) {
    host_message(message);
    return k_exit_failed;
}

// `escaped` for a terminal, which must not take a name for orders.
void print_name(BlockHandle name, bool escaped) {
    if (escaped) {
        const std::string shown = printable(text_bytes(name));
        host_print(shown.data(), static_cast<uint32_t>(shown.size()));
    } else {
        print_bytes(name);
    }
}

// A new name must come back from the file as it is, and stand on a line of its own in a list.
bool name_can_be_saved(const char *name) {
    return cellname_valid(name) && strlen(name) <= k_cellname_max &&
           strpbrk(name, "\r\n") == nullptr;
}

// True when the finished web, with a text of n bytes in this cell, can be read again. `line_feeds`
// are those that reading will put a carriage return before.
bool leaves_room_to_read(CellHandle cell, uint32_t n, uint32_t line_feeds) {
    uint32_t free_blocks = blocks_free();
    for (BlockHandle h = cell_text(cell); h != 0; h = block_next(h)) {
        ++free_blocks;
    }
    const uint32_t full_blocks = (n + line_feeds + k_text_block_chars - 1) / k_text_block_chars;
    return free_blocks >= full_blocks + k_reading_reserve;
}

int store_text(CellHandle cell) {
    const uint32_t size = new_text_size();
    if (!leaves_room_to_read(cell, size, new_text_bare_line_feeds()) ||
        !cell_text_fits(cell, size)) {
        return status_of(report_error(k_out_of_memory));
    }
    cell_replace_text(cell, new_text_bytes(), size);
    return k_exit_done;
}

// The report goes to the path that was asked for, or to the console: a web may come from anybody,
// and is not to name the file that is written over.
int direct_report(const CommandLine &line) {
    if (!line.output || is_standard_stream(line.output->c_str())) {
        set_option_odest(k_output_console);
        return k_exit_done;
    }
    if (line.output->empty()) {
        return misuse("--output is empty");
    }
    host_name_file(line.output->c_str());
    if (same_file(line.file.c_str(), line.output->c_str())) {
        return refuse("is the web's own file");
    }
    output_set_path(line.output->c_str());
    set_option_odest(k_output_file);
    return k_exit_done;
}

// Brings the options that the command line names into force. They are not saved.
int apply_report_options(const CommandLine &line) {
    if (line.type != 0) {
        set_option_rtype(line.type);
    }
    if (line.format) {
        if (line.format->size() > k_rfmt_max) {
            return misuse(
                ("a report format has at most " + std::to_string(k_rfmt_max) + " characters")
                    .c_str());
        }
        set_option_rfmt(line.format->c_str());
    }
    if (line.all) {
        set_option_rall(1);
    } else if (line.selection || line.report_cell) {
        set_option_rall(0);
    }
    host_select(line.selection ? line.selection->c_str() : "");
    if (line.newline != 0) {
        set_option_onewl(line.newline);
        host_console_newline(line.newline);
    }
    return direct_report(line);
}

CellHandle find_cell(const std::string &name) {
    const CellHandle cell = cell_lookup(name.c_str());
    if (cell == 0) {
        host_message("no such cell");
    }
    return cell;
}

// The file has all that there is to set; standard output has not.
bool changes_nothing(const CommandLine &line, CellHandle cell) {
    const bool has_new_text = line.text || line.text_file;
    return !is_standard_stream(line.file.c_str()) &&
           (!has_new_text || new_text_equals(cell_text(cell)));
}

}  // namespace

int command_new(const CommandLine &line) {
    host_name_file(line.file.c_str());
    const char *name = line.file.c_str();
    int status = line.force ? web_lock(name, false) : web_claim(name);
    if (status != k_exit_done) {
        return status;
    }
    web_reset("home");
    status = web_save(name);
    if (status != k_exit_done && !line.force) {
        web_give_up(name);
    }
    return status;
}

int command_list(const CommandLine &line) {
    const int status = load_to_read(line.file);
    if (status != k_exit_done) {
        return status;
    }
    const bool escaped = !line.zero && output_is_terminal();
    const char end = line.zero ? '\0' : '\n';
    CellHandle cell = first_live_cell();
    for (; cell != 0; cell = next_live_cell(cell)) {
        print_name(cell_name(cell), escaped);
        host_print(&end, 1);
    }
    return k_exit_done;
}

int command_show(const CommandLine &line) {
    const int status = load_to_read(line.file);
    if (status != k_exit_done) {
        return status;
    }
    const CellHandle cell = find_cell(line.cell);
    if (cell == 0) {
        return k_exit_refused;
    }
    const uint8_t native = k_native_crlf ? uint8_t{k_newline_crlf} : uint8_t{k_newline_lf};
    print_lines(cell_text(cell), line.newline != 0 ? line.newline : native);
    return k_exit_done;
}

int command_set(const CommandLine &line) {
    int status = new_text_take(line);
    if (status == k_exit_done) {
        status = load_to_write(line, line.file);
    }
    if (status != k_exit_done) {
        return status;
    }
    CellHandle cell = cell_lookup(line.cell.c_str());
    if (cell != 0 && changes_nothing(line, cell)) {
        return k_exit_done;
    }
    if (cell == 0) {
        if (!name_can_be_saved(line.cell.c_str())) {
            return refuse("Bad cell name supplied");
        }
        cell = cell_create(index_root_address(), line.cell.c_str());
    }
    if (line.text || line.text_file) {
        status = store_text(cell);
    }
    return status == k_exit_done ? web_save(line.file.c_str()) : status;
}

int command_rm(const CommandLine &line) {
    const int status = load_to_write(line, line.file);
    if (status != k_exit_done) {
        return status;
    }
    const CellHandle cell = find_cell(line.cell);
    if (cell == 0) {
        return k_exit_refused;
    }
    if (cell == index_root()) {
        return refuse("Can't Delete Home");
    }
    cell_delete(cell);
    return web_save(line.file.c_str());
}

int command_convert(const CommandLine &line) {
    const int status = load_to_write(line, line.out_file);
    return status == k_exit_done ? web_save(line.out_file.c_str()) : status;
}

int command_report(const CommandLine &line) {
    int status = load_to_read(line.file);
    if (status != k_exit_done) {
        return status;
    }
    if (line.report_cell) {
        const CellHandle cell = find_cell(*line.report_cell);
        if (cell == 0) {
            return k_exit_refused;
        }
        set_current(cell);
    }
    status = apply_report_options(line);
    if (status != k_exit_done) {
        return status;
    }
    report_run();
    return status_of(report_result());
}
