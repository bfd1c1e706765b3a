// Files by path where the C library takes UTF-8 and '/' separates folders.
#include "core/host.h"

#include <sys/stat.h>
#include <unistd.h>

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

FileKind file_kind(const char *path) {
    struct stat link;
    struct stat target;
    if (lstat(path, &link) != 0) {
        return FileKind::missing;
    }
    if (stat(path, &target) != 0 || !S_ISREG(target.st_mode)) {
        return FileKind::other;
    }
    return S_ISLNK(link.st_mode) || target.st_nlink > 1 ? FileKind::linked : FileKind::plain;
}

// The owner can be changed by few; without it the permissions alone must not open the file to a
// group of another owner's.
void file_copy_attributes(const char *from, const char *to) {
    struct stat status;
    if (stat(from, &status) != 0) {
        return;
    }
    bool owned = chown(to, status.st_uid, status.st_gid) == 0;
    chmod(to, owned ? status.st_mode & 07777 : status.st_mode & 0700);
}
