#include "cli/web_file.h"

#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "core/errors.h"
#include "core/host_files.h"
#include "core/recovery.h"
#include "file/save.h"
#include "file/web_reader.h"
#include "file/web_writer.h"
#include "platform/lock.h"
#include "platform/program.h"
#include "program/recovery.h"
#include "report/output.h"

#include <cstring>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;

// The web at hand and what became of it. Not locals: reading and writing allocate.
static struct WebFile {
    FILE *file;
    int result;
    const char *path;       // to save to
    bool keep_old;          // what is there
    bool kept_old;          // was read from the last path, and a save has kept it
    std::string target;     // that is going to be saved; "" for none
    Fingerprint last;       // of the file that was read to be saved again
    std::string last_path;  // and its path
} web_file;

namespace {

constexpr uint32_t k_lock_milliseconds = 10000;

// A web is read in a few pieces, each of which the system is asked for.
constexpr size_t k_read_buffer_size = 65536;

void read_body(void *) {
    web_file.result = web_read(web_file.file);
}

void write_body(void *) {
    web_file.result = web_write(web_file.file);
}

void save_body(void *) {
    web_file.result = save_web_file(web_file.path, &web_file.keep_old, &web_file.last);
}

fs::path path_of(const char *utf8) {
    return {reinterpret_cast<const char8_t *>(utf8)};
}

// Runs one of the two bodies that write; the exit status.
int run_writing(void (*body)(void *)) {
    if (recovery_run(body, nullptr) < 0) {
        program_recover();
        return k_exit_memory;
    }
    return web_file.result < 0 ? k_exit_failed : k_exit_done;
}

// Only a file that is going to be saved over is looked at twice.
void prepare_reading(const char *name) {
    static char buffer[k_read_buffer_size];
    setvbuf(web_file.file, buffer, _IOFBF, sizeof buffer);
    if (!web_file.target.empty() && same_file(name, web_file.target.c_str())) {
        web_file.last = fingerprint_of(web_file.file);
        web_file.last_path = name;
    }
}

// True when there is a file now.
bool finish_cut_off_save(const char *name) {
    FILE *file = open_web_file(name, file_read_mode());
    if (file != nullptr) {
        fclose(file);
    }
    return file != nullptr;
}

bool has_successor(const char *name) {
    const char *successor = file_successor(name);
    std::error_code error;
    return *successor != 0 && fs::exists(path_of(successor), error);
}

int lock_status(LockResult result) {
    switch (result) {
    case LockResult::held:
        return k_exit_done;
    case LockResult::busy:
        host_message(("in use by " + lock_holder()).c_str());
        return k_exit_failed;
    default:
        report_error(k_cannot_open_web);
        return k_exit_failed;
    }
}

}  // namespace

bool is_standard_stream(const char *name) {
    return strcmp(name, "-") == 0;
}

bool same_file(const char *first, const char *second) {
    std::error_code error;
    const char *path = is_standard_stream(first) ? k_standard_input_path : first;
    return fs::equivalent(path_of(path), path_of(second), error);
}

int web_lock(const char *name, bool must_exist) {
    host_name_file(name);
    if (is_standard_stream(name)) {
        return k_exit_done;
    }
    web_file.target = name;
    LockResult result = lock_file(name, k_lock_milliseconds);
    if (result == LockResult::missing && finish_cut_off_save(name)) {
        result = lock_file(name, k_lock_milliseconds);
    }
    return result == LockResult::missing && !must_exist ? k_exit_done : lock_status(result);
}

bool web_is_there(const char *name) {
    std::error_code error;
    return !is_standard_stream(name) &&
           (fs::exists(fs::symlink_status(path_of(name), error)) || has_successor(name));
}

int web_claim(const char *name) {
    host_name_file(name);
    if (is_standard_stream(name)) {
        return k_exit_done;
    }
    const LockResult result = has_successor(name) ? LockResult::busy : lock_new_file(name);
    if (result == LockResult::busy) {
        host_message("file exists");
        return k_exit_refused;
    }
    return lock_status(result);
}

void web_give_up(const char *name) {
    std::error_code error;
    if (!is_standard_stream(name)) {
        fs::remove(path_of(name), error);
    }
}

int web_load(const char *name) {
    host_name_file(name);
    const bool is_stdin = is_standard_stream(name);
    web_file.file = is_stdin ? stdin : open_web_file(name, file_read_mode());
    if (web_file.file == nullptr) {
        report_error(k_cannot_open_web);
        return k_exit_failed;
    }
    if (!is_stdin) {
        prepare_reading(name);
    }
    const bool abandoned = recovery_run(read_body, nullptr) < 0;
    if (!is_stdin) {
        fclose(web_file.file);
    }
    web_file.file = nullptr;
    if (abandoned) {
        program_recover();
        return k_exit_memory;
    }
    output_reset();
    return k_exit_done;
}

int web_load_unlocked(const char *name) {
    web_file.target = name;
    return web_load(name);
}

int web_save(const char *name) {
    host_name_file(name);
    if (is_standard_stream(name)) {
        web_file.file = stdout;
        return run_writing(write_body);
    }
    const bool over_itself = web_file.last.known && same_file(web_file.last_path.c_str(), name);
    if (over_itself && web_file_changed(name, web_file.last)) {
        host_message("changed by another program meanwhile, nothing was written");
        return k_exit_refused;
    }
    web_file.path = name;
    web_file.keep_old = over_itself && !web_read_was_whole() && !web_file.kept_old;
    const bool keeps = web_file.keep_old;
    const int status = run_writing(save_body);
    web_file.kept_old |= keeps && status == k_exit_done;
    return status;
}

int web_save_unlocked(const char *name) {
    int status = web_lock(name, false);
    if (status == k_exit_done) {
        status = web_save(name);
        unlock_file();
    }
    return status;
}
