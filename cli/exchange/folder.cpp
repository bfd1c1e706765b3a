#include "cli/exchange/folder.h"

#include "cli/exchange/paths.h"
#include "cli/exit_status.h"
#include "core/host_files.h"

#include <cerrno>

namespace fs = std::filesystem;

namespace {

int fail(const std::string &path, const char *message, const std::error_code &error) {
    say_of(path, message, error);
    return k_exit_failed;
}

int refuse(const std::string &path, const char *message) {
    say_of(path, message);
    return k_exit_refused;
}

// The path without separators at its end, which name no other folder.
fs::path folder_path(const std::string &folder) {
    const fs::path path = path_of(folder).lexically_normal();
    return path.has_filename() ? path : path.parent_path();
}

// Makes a folder that was not there: in the folder where that exists, else beside it. In the folder
// it begins with a point, so that a program that was killed leaves nothing that an import takes.
fs::path fresh_folder(const fs::path &folder, std::error_code *error) {
    const bool inside = fs::is_directory(folder, *error);
    error->clear();
    for (uint32_t number = 1;; ++number) {
        const std::string suffix = "-new" + (number > 1 ? std::to_string(number) : "");
        fs::path fresh = inside ? folder / (".qvx" + suffix) : fs::path(folder) += suffix;
        if (fs::create_directory(fresh, *error) || *error) {
            return fresh;
        }
    }
}

bool write_whole_file(const fs::path &path, const std::string &bytes) {
    errno = 0;
    FILE *file = file_open(utf8_of(path).c_str(), "wb");
    if (file == nullptr) {
        return false;
    }
    const bool written = fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return fclose(file) == 0 && written;
}

bool write_files(const fs::path &folder, const std::vector<FolderFile> &files) {
    for (const FolderFile &file : files) {
        if (!write_whole_file(folder / path_of(file.name), file.bytes)) {
            return false;
        }
    }
    return true;
}

// The files of a folder that exists are exchanged one by one; the old ones go into `fresh` and come
// back when one of them cannot be.
struct Exchange {
    fs::path folder;
    fs::path fresh;
    std::vector<fs::path> moved;  // names that came into the folder
};

fs::path aside_of(const Exchange &exchange, const fs::path &name) {
    return exchange.fresh / (fs::path(name) += ".old");
}

bool exchange_file(Exchange *exchange, const fs::path &name, std::error_code *error) {
    const fs::path there = exchange->folder / name;
    if (fs::exists(fs::symlink_status(there, *error))) {
        fs::rename(there, aside_of(*exchange, name), *error);
        if (*error) {
            return false;
        }
    }
    exchange->moved.push_back(name);
    fs::rename(exchange->fresh / name, there, *error);
    return !*error;
}

void take_back(const Exchange &exchange) {
    std::error_code ignored;
    for (const fs::path &name : exchange.moved) {
        fs::remove(exchange.folder / name, ignored);
        if (fs::exists(fs::symlink_status(aside_of(exchange, name), ignored))) {
            fs::rename(aside_of(exchange, name), exchange.folder / name, ignored);
        }
    }
}

bool exchange_files(const fs::path &folder, const fs::path &fresh,
                    const std::vector<FolderFile> &files, std::error_code *error) {
    Exchange exchange = {folder, fresh, {}};
    for (const FolderFile &file : files) {
        if (!exchange_file(&exchange, path_of(file.name), error)) {
            take_back(exchange);
            return false;
        }
    }
    return true;
}

bool move_into_place(const fs::path &fresh, const fs::path &folder,
                     const std::vector<FolderFile> &files, std::error_code *error) {
    if (fs::is_directory(folder, *error)) {
        return exchange_files(folder, fresh, files, error);
    }
    error->clear();
    fs::rename(fresh, folder, *error);
    return !*error;
}

// Old files that could not come back stay where they are.
void sweep(const fs::path &fresh, const std::vector<FolderFile> &files, bool done) {
    std::error_code ignored;
    if (done) {
        fs::remove_all(fresh, ignored);
        return;
    }
    for (const FolderFile &file : files) {
        fs::remove(fresh / path_of(file.name), ignored);
    }
    fs::remove(fresh, ignored);
}

}  // namespace

int folder_is_free(const std::string &folder, const std::vector<FolderFile> &files, bool force) {
    const fs::path path = folder_path(folder);
    std::error_code error;
    if (!fs::exists(fs::symlink_status(path, error))) {
        return k_exit_done;
    }
    if (!fs::is_directory(path, error)) {
        return refuse(folder, "is no folder");
    }
    const bool empty = fs::is_empty(path, error);
    if (error) {
        return fail(folder, "cannot be read", error);
    }
    if (!empty && !force) {
        return refuse(folder, "is not empty: use --force to write over files of the same names");
    }
    for (const FolderFile &file : files) {
        if (fs::is_directory(fs::symlink_status(path / path_of(file.name), error))) {
            return refuse(utf8_of(path / path_of(file.name)), "is a folder");
        }
    }
    return k_exit_done;
}

int write_folder(const std::string &folder, const std::vector<FolderFile> &files) {
    const fs::path path = folder_path(folder);
    std::error_code error;
    const fs::path fresh = fresh_folder(path, &error);
    if (error) {
        return fail(folder, "cannot be made", error);
    }
    if (!write_files(fresh, files)) {
        error = {errno, std::generic_category()};
    }
    const bool done = !error && move_into_place(fresh, path, files, &error);
    sweep(fresh, files, done);
    return done ? k_exit_done : fail(folder, "cannot be written", error);
}
