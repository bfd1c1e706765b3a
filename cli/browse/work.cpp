#include "cli/browse/work.h"

#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/web_file.h"
#include "cli/webs.h"
#include "core/host_messages.h"
#include "file/document.h"
#include "file/web_reader.h"
#include "web/changed.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <sys/stat.h>

namespace fs = std::filesystem;

static struct Work {
    std::string file;
    std::string kept;  // where changes were put last
    bool may_change = true;
} work;

namespace {

constexpr const char *k_unsaved = ".unsaved";
constexpr int k_unsaved_max = 100;  // files of that name in a folder
constexpr mode_t k_nobody_else = 077;

// Folders for what must not be lost: the file's own, the user's, and any.
std::vector<fs::path> folders() {
    const char *home = getenv("HOME");
    std::error_code error;
    return {fs::path(work.file).parent_path(), home != nullptr ? home : "",
            fs::temp_directory_path(error)};
}

std::string unsaved_name(const fs::path &folder, int number) {
    const std::string behind = number == 1 ? "" : std::to_string(number);
    return (folder / (fs::path(work.file).filename().string() + k_unsaved + behind)).string();
}

// The first such path that has no file.
std::string free_name(const fs::path &folder) {
    std::error_code error;
    for (int number = 1; number < k_unsaved_max; ++number) {
        const std::string name = unsaved_name(folder, number);
        if (!fs::exists(fs::symlink_status(name, error))) {
            return name;
        }
    }
    return "";
}

// Has one of the folders take the web, in a file that only this user can read.
bool keep_web() {
    const mode_t before = umask(k_nobody_else);
    bool done = false;
    for (const fs::path &folder : folders()) {
        const std::string name = free_name(folder);
        if (!done && !name.empty() && web_save(name.c_str()) == k_exit_done) {
            work.kept = name;
            done = true;
        }
    }
    umask(before);
    host_name_file(work.file.c_str());
    return done;
}

}  // namespace

int work_open(const CommandLine &line) {
    work.file = line.file;
    const int status = web_load_unlocked(work.file.c_str());
    if (status != k_exit_done) {
        return status;
    }
    if (web_read_failed()) {
        return k_exit_failed;
    }
    work.may_change = web_read_was_whole() || line.force;
    doc_set_paths(work.file.c_str());
    return k_exit_done;
}

const std::string &work_file() {
    return work.file;
}

bool work_may_change() {
    if (!work.may_change) {
        host_message("cannot be read whole, and writing would lose the rest: use --force");
    }
    return work.may_change;
}

bool work_save() {
    if (!work_may_change() || web_save_unlocked(work.file.c_str()) != k_exit_done) {
        return false;
    }
    set_web_changed(false);
    show_status_message("Saved");
    return true;
}

bool work_keep_unsaved() {
    if (!keep_web()) {
        host_message("unsaved changes could not be kept");
        return false;
    }
    set_web_changed(false);
    return true;
}

void work_name_kept() {
    if (!work.kept.empty()) {
        host_message(("unsaved changes are in " + work.kept).c_str());
    }
}

void work_tell_kept() {
    std::error_code error;
    for (const fs::path &folder : folders()) {
        const std::string name = unsaved_name(folder, 1);
        if (fs::exists(name, error)) {
            host_message(("changes that were not saved are in " + name).c_str());
            return;
        }
    }
}
