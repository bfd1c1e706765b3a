#include "cli/web_file.h"

#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "core/errors.h"
#include "core/host.h"
#include "core/recovery.h"
#include "file/document.h"
#include "file/web_reader.h"
#include "file/web_writer.h"
#include "report/output.h"

#include <cstring>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

// The file being read or written and what became of it. Not locals: reading allocates.
struct WebFile {
    FILE *file;
    int result;
};

WebFile web_file;

constexpr int k_former_names = 100;  // tried before a save gives up

void read_body(void *) {
    web_file.result = web_read(web_file.file);
}

void write_body(void *) {
    web_file.result = web_write(web_file.file);
}

fs::path path_of(const char *utf8) {
    return {reinterpret_cast<const char8_t *>(utf8)};
}

// Copies the file to a name beside it that is free: PATH~, or else PATH~2, PATH~3, ... A copy and
// not a rename, so that the file keeps its permissions and its links. Returns the copy's path;
// empty when there is nothing to keep. An error is left in `error`.
fs::path keep_former(const fs::path &path, std::error_code &error) {
    if (!fs::is_regular_file(path, error)) {
        error.clear();
        return {};
    }
    for (int i = 1; i <= k_former_names; ++i) {
        fs::path kept = path;
        kept += i == 1 ? "~" : "~" + std::to_string(i);
        if (fs::copy_file(path, kept, error)) {
            return kept;
        }
        if (error != std::errc::file_exists) {
            break;
        }
    }
    return {};
}

// The path behind symbolic links, so that putting a file back leaves the link alone.
fs::path real_path(const char *name) {
    std::error_code error;
    fs::path path = fs::canonical(path_of(name), error);
    return error ? path_of(name) : path;
}

// Writes the web to the open file and closes it unless it is standard output.
int write_and_close() {
    const bool abandoned = recovery_run(write_body, nullptr) < 0;
    const bool is_stdout = web_file.file == stdout;
    const int closed = is_stdout ? 0 : std::fclose(web_file.file);
    web_file.file = nullptr;
    if (abandoned) {
        program_recover();
        return k_exit_memory;
    }
    if (web_file.result == 0 && closed != 0) {
        web_file.result = report_error(k_cannot_write_web);
    }
    return web_file.result < 0 ? k_exit_failed : k_exit_done;
}

int save_over(const char *name) {
    std::error_code error;
    const fs::path path = real_path(name);
    const bool existed = fs::exists(path, error);
    const fs::path kept = keep_former(path, error);
    if (error) {
        report_error(k_cannot_write_web);
        return k_exit_failed;
    }
    web_file.file = file_open(name, "wb");
    if (web_file.file == nullptr) {
        report_error(k_cannot_open_web);
        fs::remove(kept, error);
        return k_exit_failed;
    }
    const int status = write_and_close();
    if (status == k_exit_done) {
        fs::remove(kept, error);
    } else if (!kept.empty()) {
        fs::rename(kept, path, error);
    } else if (!existed) {
        fs::remove(path, error);
    }
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
    return web_file.result < 0 || web_read_was_cut() ? k_exit_failed : k_exit_done;
}

int web_save(const char *name) {
    host_name_file(name);
    if (is_standard_stream(name)) {
        web_file.file = stdout;
        return write_and_close();
    }
    return save_over(name);
}
