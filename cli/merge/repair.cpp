// `qvx repair`: a whole web out of a damaged file, and the list of what was damaged.
#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/merge/damaged_web.h"
#include "cli/merge/merge_commands.h"
#include "cli/print.h"
#include "cli/shown.h"
#include "cli/web_file.h"
#include "cli/webs.h"
#include "core/errors.h"
#include "core/host_files.h"
#include "core/recovery.h"
#include "core/text.h"
#include "file/save.h"
#include "file/web_tags.h"
#include "program/recovery.h"
#include "web/cells.h"
#include "web/option_text.h"

#include <nlohmann/json.hpp>

// A file of more bytes is no web, however damaged.
constexpr size_t k_file_max = 64U << 20;

static struct Repair {
    std::string out;  // messages name it as long as the program runs
    std::string bytes;
    SalvagedWeb web;
} repair;

namespace {

int fail_with(const char *message) {
    host_file_message(message);
    return k_exit_failed;
}

int read_open(FILE *file) {
    static char bytes[65536];
    size_t n = 0;
    while ((n = fread(bytes, 1, sizeof bytes, file)) > 0) {
        repair.bytes.append(bytes, n);
        if (repair.bytes.size() > k_file_max) {
            host_message("too big to be a web");
            return k_exit_failed;
        }
    }
    return ferror(file) == 0 ? k_exit_done : fail_with(error_message(k_cannot_read_web));
}

int read_bytes(const std::string &name) {
    host_name_file(name.c_str());
    if (is_standard_stream(name.c_str())) {
        return read_open(stdin);
    }
    FILE *file = open_web_file(name.c_str(), file_read_mode());
    if (file == nullptr) {
        return fail_with(error_message(k_cannot_open_web));
    }
    const int status = read_open(file);
    fclose(file);
    return status;
}

// Takes blocks: no local may need a destructor.
void take_options_body(void *) {
    web_reset("home");
    for (const auto &option : repair.web.options) {
        const OptionId id = web_tag_option(option.first);
        if (id != k_option_count && !option.second.empty()) {
            const BlockHandle text =
                text_from_bytes(option.second.data(), static_cast<uint32_t>(option.second.size()));
            option_apply_text(id, text);
            chain_free(text);
        }
    }
}

// The list goes where the web does not.
void say(const std::string &line, bool to_error) {
    if (to_error) {
        fprintf(stderr, "%s\n", printable(line).c_str());
    } else {
        print_line(line);
    }
}

std::string as_line(const std::string &file, const Damage &damage) {
    return file + ":" + std::to_string(damage.line) + ": " +
           (damage.cell.empty() ? "" : damage.cell + ": ") + damage.message;
}

std::string as_json(const std::string &file, const Damage &damage) {
    const nlohmann::ordered_json object{
        {"file", file},        {"line", damage.line},       {"cell", damage.cell},
        {"kind", damage.kind}, {"message", damage.message}, {"text", damage.text}};
    return object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

int say_damages(const CommandLine &line, bool to_error) {
    for (const Damage &damage : repair.web.damages) {
        say(line.json ? as_json(line.file, damage) : as_line(line.file, damage), to_error);
    }
    return repair.web.damages.empty() ? k_exit_done : k_exit_refused;
}

int make_web() {
    if (recovery_run(take_options_body, nullptr) < 0) {
        program_recover();
        return k_exit_memory;
    }
    return take_notes(std::move(repair.web.notes));
}

// Loading it lets the save keep the damaged file, and see whether it is still the same.
void load_what_is_written_over(const CommandLine &line, const std::string &out) {
    if (same_file(line.file.c_str(), out.c_str())) {
        host_hold_messages(true);
        web_load(line.file.c_str());
        host_hold_messages(false);
    }
}

int write_repaired(const CommandLine &line, const std::string &out) {
    int status = read_bytes(line.file);
    if (status != k_exit_done) {
        return status;
    }
    repair.web = salvage(repair.bytes);
    load_what_is_written_over(line, out);
    host_name_file(line.file.c_str());
    status = make_web();
    return status == k_exit_done && !line.dry_run ? web_save(out.c_str()) : status;
}

int claim(const CommandLine &line, const std::string &out) {
    if (line.dry_run) {
        return k_exit_done;
    }
    return line.force ? web_lock(out.c_str(), false) : web_claim(out.c_str());
}

}  // namespace

int command_repair(const CommandLine &line) {
    repair.out = line.output.value_or("-");
    const std::string &out = repair.out;
    int status = claim(line, out);
    if (status != k_exit_done) {
        return status;
    }
    status = write_repaired(line, out);
    if (status != k_exit_done) {
        if (!line.force && !line.dry_run) {
            web_give_up(out.c_str());
        }
        return status;
    }
    return say_damages(line, !line.dry_run && is_standard_stream(out.c_str()));
}
