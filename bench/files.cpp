#include "bench/files.h"

#include <cstdlib>
#include <filesystem>

FILE *open_or_exit(const char *path, const char *mode) {
    FILE *file = fopen(path, mode);
    if (file == nullptr) {
        perror(path);
        exit(2);
    }
    return file;
}

std::string read_as_xml(const char *path) {
    const std::string root = "<eof>";
    FILE *file = open_or_exit(path, "rb");
    std::string bytes = root;
    bytes.resize(root.size() + std::filesystem::file_size(path));
    if (fread(bytes.data() + root.size(), bytes.size() - root.size(), 1, file) != 1) {
        perror(path);
        exit(2);
    }
    fclose(file);
    return bytes;
}
