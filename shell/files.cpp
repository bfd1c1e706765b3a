// Files by path, where the system takes UTF-16 and '\' separates folders. Knows no window: qvx
// links it too.
#include "core/host.h"

#include "shell/platform.h"
#include "shell/text_conversion.h"

#include <cstdio>

const char k_path_separator = '\\';

static struct Files {
    wchar_t path[1024];
    wchar_t other_path[1024];
    wchar_t mode[8];
} files;

namespace {

const wchar_t *wide_path(const char *path) {
    utf16_copy(files.path, 1024, path);
    return files.path;
}

}  // namespace

FILE *file_open(const char *path, const char *mode) {
    utf16_copy(files.mode, 8, mode);
    return _wfopen(wide_path(path), files.mode);
}

int file_rename(const char *from, const char *to) {
    utf16_copy(files.other_path, 1024, to);
    DeleteFileW(files.other_path);
    return MoveFileW(wide_path(from), files.other_path) ? 0 : -1;
}

int file_remove(const char *path) {
    return DeleteFileW(wide_path(path)) ? 0 : -1;
}

FileKind file_kind(const char *path) {
    DWORD attributes = GetFileAttributesW(wide_path(path));
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return FileKind::missing;
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return FileKind::other;
    }
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ? FileKind::linked : FileKind::plain;
}

// A new file takes its permissions from its folder.
void file_copy_attributes(const char *, const char *) {}
