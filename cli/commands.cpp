#include "cli/commands.h"

#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/note.h"
#include "cli/print.h"
#include "cli/report_json.h"
#include "cli/web_file.h"
#include "cli/webs.h"
#include "cli/would_write.h"
#include "core/errors.h"
#include "file/web_reader.h"
#include "platform/program.h"
#include "report/output.h"
#include "report/reports.h"
#include "web/cells.h"
#include "web/index.h"
#include "web/options.h"
#include "web/trail.h"

#include <algorithm>

// A report that is not printed as it comes: outside of every frame that the arena's recovery may
// leave.
static struct KeptReport { std::string text; } kept;

namespace {

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

// The report goes to the path that was asked for, or to the console: a web may come from anybody,
// and is not to name the file that is written over.
int direct_report(const CommandLine &line, const std::string &file) {
    if (!line.output || is_standard_stream(line.output->c_str())) {
        set_option_odest(k_output_console);
        return k_exit_done;
    }
    if (line.output->empty()) {
        return misuse("--output is empty");
    }
    host_name_file(line.output->c_str());
    if (same_file(file.c_str(), line.output->c_str())) {
        return refuse("is the web's own file");
    }
    output_set_path(line.output->c_str());
    set_option_odest(k_output_file);
    return k_exit_done;
}

// Brings the options that the command line names into force. They are not saved.
int apply_report_options(const CommandLine &line, const std::string &file) {
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
    return direct_report(line, file);
}

CellHandle find_cell(const std::string &name) {
    const CellHandle cell = cell_lookup(name.c_str());
    if (cell == 0) {
        no_such_cell(name);
    }
    return cell;
}

// A terminal gets the report when it is whole, without its control characters.
int run_report(const CommandLine &line, const std::string &file) {
    const bool keeps = line.json || output_is_terminal();
    kept.text.clear();
    host_keep_console(keeps ? &kept.text : nullptr);
    report_run();
    host_keep_console(nullptr);
    if (line.json) {
        print_report_json(file, line.newline != 0 ? kept.text : with_lf(kept.text));
    } else if (keeps) {
        print_text(kept.text);
    }
    return status_of(report_result());
}

int report_on(const CommandLine &line, const std::string &file) {
    int status = load_to_read(file);
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
    status = apply_report_options(line, file);
    if (status != k_exit_done) {
        return status;
    }
    if (line.json && is_report_on_links()) {
        print_links_json(file);
        return k_exit_done;
    }
    return run_report(line, file);
}

int would_make(const CommandLine &line) {
    if (!line.force && web_is_there(line.file.c_str())) {
        return refuse("file exists");
    }
    web_reset("home");
    print_what_writing_changes(line.file);
    return k_exit_done;
}

}  // namespace

int command_new(const CommandLine &line) {
    host_name_file(line.file.c_str());
    const char *name = line.file.c_str();
    if (line.dry_run) {
        return would_make(line);
    }
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

int command_convert(const CommandLine &line) {
    const int status = load_to_write(line, line.out_file);
    if (status == k_exit_done && line.dry_run) {
        print_what_writing_changes(line.out_file);
        return k_exit_done;
    }
    return status == k_exit_done ? web_save(line.out_file.c_str()) : status;
}

int command_report(const CommandLine &line) {
    if (line.output && line.files.size() > 1) {
        return misuse("--output takes the report on one FILE");
    }
    int status = k_exit_done;
    for (const std::string &file : line.files) {
        status = std::max(status, report_on(line, file));
    }
    return status;
}
