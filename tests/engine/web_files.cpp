#include "tests/engine/web_files.h"

#include "core/host.h"
#include "file/web_reader.h"
#include "file/web_writer.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <set>

#include <unistd.h>

namespace {

struct FailingFile {
    std::string bytes;
    size_t position;
};

ssize_t read_failing(void *cookie, char *buffer, size_t size) {
    FailingFile *file = static_cast<FailingFile *>(cookie);
    size_t rest = file->bytes.size() - file->position;
    if (rest == 0) {
        errno = EIO;
        return -1;
    }
    size_t n = rest < size ? rest : size;
    memcpy(buffer, file->bytes.data() + file->position, n);
    file->position += n;
    return static_cast<ssize_t>(n);
}

// A file on a disk with so much room.
struct RoomyFile {
    std::string bytes;
    size_t room;
};

ssize_t write_with_room(void *cookie, const char *bytes, size_t size) {
    RoomyFile *file = static_cast<RoomyFile *>(cookie);
    size_t rest = file->room - file->bytes.size();
    file->bytes.append(bytes, rest < size ? rest : size);
    return static_cast<ssize_t>(rest < size ? rest : size);
}

int read_and_close(FILE *file) {
    int code = web_read(file);
    fclose(file);
    return code;
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
    std::string copy = bytes;
    return read_and_close(fmemopen(copy.data(), copy.size(), "rb"));
}

int read_web_failing_after(const std::string &bytes, size_t good) {
    FailingFile cookie = {bytes.substr(0, good), 0};
    int code =
        read_and_close(fopencookie(&cookie, "rb", {read_failing, nullptr, nullptr, nullptr}));
    refresh_views();
    return code;
}

std::string written_web(int *code, size_t room) {
    RoomyFile cookie = {"", room};
    FILE *file = fopencookie(&cookie, "wb", {nullptr, write_with_room, nullptr, nullptr});
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

std::string file_bytes(const std::string &path) {
    FILE *file = fopen(path.c_str(), "rb");
    if (file == nullptr) {
        return "(no file)";
    }
    std::string bytes;
    for (int c = getc(file); c != EOF; c = getc(file)) {
        bytes.push_back(static_cast<char>(c));
    }
    fclose(file);
    return bytes;
}

void make_file(const std::string &path, const std::string &bytes) {
    FILE *file = fopen(path.c_str(), "wb");
    fwrite(bytes.data(), 1, bytes.size(), file);
    fclose(file);
}

std::string cell_file(const std::string &name, const std::string &text) {
    return "<cname>" + name + "</cname><text>" + text + "</text>";
}
