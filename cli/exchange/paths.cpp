#include "cli/exchange/paths.h"

#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/shown.h"
#include "cli/web_file.h"
#include "core/block_arena.h"
#include "core/host_files.h"

#include <cerrno>

namespace fs = std::filesystem;

namespace {

// Markup and line ends may make a file longer than the text in it, but not by so much.
constexpr size_t k_file_max = size_t{10} * k_block_count * k_block_payload_size;

int read_open_file(FILE *file, const std::string &name, std::string *bytes) {
    char some[1024];
    size_t count = 0;
    while ((count = fread(some, 1, sizeof some, file)) > 0 && bytes->size() <= k_file_max) {
        bytes->append(some, count);
    }
    if (ferror(file) != 0) {
        say_of(name, "cannot be read", {errno, std::generic_category()});
        return k_exit_failed;
    }
    if (bytes->size() > k_file_max) {
        say_of(name, "does not fit: more than " + std::to_string(k_file_max) + " bytes");
        return k_exit_memory;
    }
    if (bytes->find('\0') != std::string::npos) {
        say_of(name, "a text cannot hold NUL characters");
        return k_exit_refused;
    }
    return k_exit_done;
}

}  // namespace

fs::path path_of(const std::string &utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

std::string utf8_of(const fs::path &path) {
    const std::u8string utf8 = path.generic_u8string();
    return {utf8.begin(), utf8.end()};
}

std::string stem_of_path(const std::string &utf8) {
    return utf8_of(path_of(utf8).stem());
}

int read_file(const std::string &utf8, std::string *bytes) {
    if (is_standard_stream(utf8.c_str())) {
        return read_open_file(stdin, utf8, bytes);
    }
    errno = 0;
    FILE *file = file_open(utf8.c_str(), "rb");
    if (file == nullptr) {
        say_of(utf8, "cannot be opened", {errno, std::generic_category()});
        return k_exit_failed;
    }
    const int status = read_open_file(file, utf8, bytes);
    fclose(file);
    return status;
}

void say_of(const std::string &utf8, const std::string &message) {
    host_name_file("");
    host_message((printable(utf8) + ": " + message).c_str());
}

void say_of(const std::string &utf8, const std::string &message, const std::error_code &error) {
    say_of(utf8, error ? message + ": " + error.message() : message);
}
