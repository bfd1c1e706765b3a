// `qvx merge`: three webs made one.
#include "cli/differences.h"
#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/merge/merge_commands.h"
#include "cli/merge/merge_notes.h"
#include "cli/merge/web_options.h"
#include "cli/shown.h"
#include "cli/web_file.h"
#include "cli/webs.h"
#include "file/web_reader.h"

#include <algorithm>
#include <array>

struct Version {
    const char *role;
    const std::string *file;
    Notes notes;
    WebOptions options;
};

// Records of options are too big for a frame.
static struct MergeCommand {
    std::string out, shown_name;  // messages name them as long as the program runs
    Version base, ours, theirs;
    MergedNotes merged;
    MergedOptions options;
} merging;

namespace {

// The file may be another program's, which is gone when somebody reads this.
int fail_with(const Version &version, const CommandLine &line, int status) {
    if (line.shown_name) {
        host_name_file(line.shown_name->c_str());
        host_message(
            (std::string(version.role) + " cannot be read whole, nothing was merged").c_str());
    }
    return status;
}

int load_version(Version *version, const CommandLine &line) {
    const int status = load_whole(*version->file, line.force);
    if (status != k_exit_done || web_read_failed()) {
        return fail_with(*version, line,
                         std::max(status, web_read_failed() ? k_exit_failed : k_exit_done));
    }
    version->notes = notes_of_web();
    version->options = options_of_web();
    return k_exit_done;
}

// The one that is written over is read last: the save then looks whether it is still the same.
int load_versions(const std::string &out, const CommandLine &line) {
    std::array<Version *, 3> versions = {&merging.base, &merging.theirs, &merging.ours};
    const auto is_out = [&out](const Version *version) {
        return same_file(version->file->c_str(), out.c_str());
    };
    std::stable_partition(versions.begin(), versions.end(),
                          [&is_out](const Version *version) { return !is_out(version); });
    int status = k_exit_done;
    for (size_t i = 0; i < versions.size() && status == k_exit_done; ++i) {
        status = load_version(versions[i], line);
    }
    return status;
}

// A label stands on a line, and a file's name may be anything.
SideLabels labels_of(const CommandLine &line) {
    return {printable(line.our_label.value_or(line.file)),
            printable(line.their_label.value_or(line.other_file))};
}

void merge_versions(const CommandLine &line) {
    merging.merged =
        merge_notes(merging.base.notes, merging.ours.notes, merging.theirs.notes, labels_of(line));
    merging.options =
        merge_options(merging.base.options, merging.ours.options, merging.theirs.options);
}

int say_conflicts() {
    for (const CellConflict &conflict : merging.merged.conflicts) {
        refuse_cell(conflict.cell, conflict.message.c_str());
    }
    for (const uint32_t id : merging.options.conflicts) {
        const SavedOption &ours = merging.ours.options.saved[id];
        host_message(("conflict of the option " + ours.name + ": " + printable(ours.value) +
                      " stays, theirs is " + printable(merging.theirs.options.saved[id].value))
                         .c_str());
    }
    const bool none = merging.merged.conflicts.empty() && merging.options.conflicts.empty();
    return none ? k_exit_done : k_exit_refused;
}

int write_merged(const CommandLine &line, const std::string &out) {
    host_name_file(out.c_str());
    const int status = take_notes(std::move(merging.merged.notes));
    if (status != k_exit_done) {
        return status;
    }
    take_options(merging.options.record);
    if (line.dry_run) {
        print_differences(merging.ours.notes, notes_of_web());
        print_option_differences(merging.ours.options.saved, saved_options());
        return k_exit_done;
    }
    return web_save(out.c_str());
}

bool reads_twice(const CommandLine &line) {
    int streams = 0;
    for (const std::string *file : {&line.base_file, &line.file, &line.other_file}) {
        streams += is_standard_stream(file->c_str()) ? 1 : 0;
    }
    return streams > 1;
}

}  // namespace

int command_merge(const CommandLine &line) {
    merging.out = line.output.value_or("-");
    const std::string &out = merging.out;
    if (reads_twice(line)) {
        host_message("standard input can be only one of the three webs");
        return k_exit_failed;
    }
    merging.base = {"the base", &line.base_file, {}, {}};
    merging.ours = {"ours", &line.file, {}, {}};
    merging.theirs = {"theirs", &line.other_file, {}, {}};
    int status = line.dry_run ? k_exit_done : web_lock(out.c_str(), false);
    if (status == k_exit_done) {
        status = load_versions(out, line);
    }
    if (status != k_exit_done) {
        return status;
    }
    merge_versions(line);
    status = write_merged(line, out);
    if (status != k_exit_done) {
        return status;
    }
    merging.shown_name = line.shown_name.value_or(out);
    host_name_file(merging.shown_name.c_str());
    return say_conflicts();
}
