// Files by path where the C library takes UTF-8 and '/' separates folders.
#include "core/host.h"

const char k_path_separator = '/';

FILE *file_open(const char *path, const char *mode) {
    return std::fopen(path, mode);
}

int file_rename(const char *from, const char *to) {
    return std::rename(from, to) == 0 ? 0 : -1;
}

int file_remove(const char *path) {
    return std::remove(path) == 0 ? 0 : -1;
}
