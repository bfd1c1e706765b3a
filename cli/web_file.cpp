#include "cli/web_file.h"

#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "core/errors.h"
#include "core/host.h"
#include "core/recovery.h"
#include "file/document.h"
#include "file/safe_save.h"
#include "file/web_reader.h"
#include "file/web_writer.h"
#include "report/output.h"

#include <cstring>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

// The file being read or written and what became of it. Not locals: reading allocates.
struct WebFile {
    FILE *file;
    int result;
};

WebFile web_file;

void read_body(void *) {
    web_file.result = web_read(web_file.file);
}

void write_body(void *) {
    web_file.result = web_write(web_file.file);
}

fs::path path_of(const char *utf8) {
    return {reinterpret_cast<const char8_t *>(utf8)};
}

// Writes the web to the open file. Returns the exit status; the code is in web_file.result.
int write_web() {
    if (recovery_run(write_body, nullptr) < 0) {
        program_recover();
        web_file.result = k_out_of_memory;
        return k_exit_memory;
    }
    return web_file.result < 0 ? k_exit_failed : k_exit_done;
}

int save_over(const char *name) {
    web_file.file = safe_save_open(name);
    if (web_file.file == nullptr) {
        report_error(k_cannot_open_web);
        return k_exit_failed;
    }
    int status = write_web();
    if (safe_save_close(web_file.file, web_file.result, false) < 0) {
        status = status == k_exit_done ? k_exit_failed : status;
        safe_save_undo();
    }
    web_file.file = nullptr;
    return status;
}

}  // namespace

bool is_standard_stream(const char *name) {
    return std::strcmp(name, "-") == 0;
}

bool file_exists(const char *name) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path_of(name), error));
}

int web_load(const char *name) {
    host_name_file(name);
    const bool is_stdin = is_standard_stream(name);
    web_file.file = is_stdin ? stdin : file_open(name, file_read_mode());
    if (web_file.file == nullptr) {
        report_error(k_cannot_open_web);
        return k_exit_failed;
    }
    const bool abandoned = recovery_run(read_body, nullptr) < 0;
    if (!is_stdin) {
        std::fclose(web_file.file);
    }
    web_file.file = nullptr;
    if (abandoned) {
        program_recover();
        return k_exit_memory;
    }
    output_reset();
    return k_exit_done;
}

int web_save(const char *name) {
    host_name_file(name);
    if (is_standard_stream(name)) {
        web_file.file = stdout;
        return write_web();
    }
    return save_over(name);
}
