#include "tests/engine/web_files.h"

#include "core/host_view.h"
#include "file/web_reader.h"
#include "file/web_writer.h"

#include <algorithm>
#include <cstdio>
#include <set>

#include <unistd.h>

namespace {

// A file on a disk with so much room, or one that can be read so far.
struct File {
    std::string bytes;
    size_t room;
};

ssize_t write_to_file(void *cookie, const char *bytes, size_t size) {
    File *file = static_cast<File *>(cookie);
    const size_t taken = std::min(size, file->room - file->bytes.size());
    file->bytes.append(bytes, taken);
    return static_cast<ssize_t>(taken);
}

ssize_t read_from_file(void *cookie, char *buffer, size_t size) {
    File *file = static_cast<File *>(cookie);
    const size_t taken = file->bytes.copy(buffer, std::min(size, file->room));
    file->bytes.erase(0, taken);
    return taken > 0 ? static_cast<ssize_t>(taken) : -1;
}

struct ScratchFiles {
    std::set<std::string> paths;
    ~ScratchFiles() {
        for (const std::string &path : paths) {
            remove(path.c_str());
            remove((path + "~").c_str());
        }
    }
};

}  // namespace

int read_web(const std::string &bytes) {
    int code = parse_web(bytes);
    refresh_views();
    return code;
}

int parse_web(const std::string &bytes) {
    FILE *file = fmemopen(const_cast<char *>(bytes.data()), bytes.size(), "rb");
    int code = web_read(file);
    fclose(file);
    return code;
}

int read_web_then_fail(const std::string &bytes) {
    File cookie = {bytes, 100};
    FILE *file = fopencookie(&cookie, "rb", {read_from_file, nullptr, nullptr, nullptr});
    int code = web_read(file);
    fclose(file);
    refresh_views();
    return code;
}

std::string written_web(int *code, size_t room) {
    File cookie = {"", room};
    FILE *file = fopencookie(&cookie, "wb", {nullptr, write_to_file, nullptr, nullptr});
    int result = web_write(file);
    fclose(file);
    if (code != nullptr) {
        *code = result;
    }
    return cookie.bytes;
}

std::string scratch_path(const std::string &name) {
    static ScratchFiles files;
    std::string path = ENGINE_TEST_SCRATCH + std::to_string(getpid()) + "_" + name;
    files.paths.insert(path);
    return path;
}

std::string cell_file(const std::string &name, const std::string &text) {
    return "<cname>" + name + "</cname><text>" + text + "</text>";
}
