#include "platform/windows/common.h"

#include "core/host_files.h"
#include "platform/windows/text_conversion.h"

#include <cerrno>
#include <cstring>

#include <windows.h>

const char k_path_separator = '\\';

static struct WidePaths { wchar_t units[k_wide_slots][k_wide_path_max]; } wide;

namespace {

constexpr const char *k_next_suffix = "-new";

constexpr struct {
    DWORD code;
    int reason;
} k_reasons[] = {
    {ERROR_FILE_NOT_FOUND, ENOENT},
    {ERROR_PATH_NOT_FOUND, ENOENT},
    {ERROR_INVALID_NAME, ENOENT},
    {ERROR_ACCESS_DENIED, EACCES},
    {ERROR_SHARING_VIOLATION, EACCES},
    {ERROR_WRITE_PROTECT, EROFS},
    {ERROR_DISK_FULL, ENOSPC},
    {ERROR_HANDLE_DISK_FULL, ENOSPC},
    {ERROR_FILE_EXISTS, EEXIST},
    {ERROR_ALREADY_EXISTS, EEXIST},
    {ERROR_FILENAME_EXCED_RANGE, ENAMETOOLONG},
};

}  // namespace

bool fail_as_system() {
    const DWORD code = GetLastError();
    errno = EIO;
    for (const auto &row : k_reasons) {
        if (row.code == code) {
            errno = row.reason;
        }
    }
    return false;
}

const wchar_t *wide_path(const char *path, WidePathSlot slot) {
    wchar_t *to = wide.units[slot];
    const uint32_t start = wide_path_start(to, &path);
    if (strlen(path) + start >= k_system_path_max) {
        errno = ENAMETOOLONG;
        return nullptr;
    }
    utf16_copy(to + start, k_wide_path_max - start, path);
    return to;
}

bool system_next_path(char *next, const char *target) {
    if (strlen(target) + strlen(k_next_suffix) >= k_system_path_max) {
        errno = ENAMETOOLONG;
        return false;
    }
    strcpy(next, target);
    strcat(next, k_next_suffix);
    return true;
}

const char *system_old_suffix() {
    return "-old";
}

// One that is still being written cannot be removed.
void system_sweep(const char *target) {
    static char next[k_system_path_max];
    if (system_next_path(next, target)) {
        system_remove(next);
    }
}

// Nothing tells whose they are.
void system_sweep_copies(const char *, bool) {}

bool system_make_room(FILE *, long) {
    return true;
}

bool system_remove(const char *path) {
    const wchar_t *name = wide_path(path);
    return name != nullptr && (DeleteFileW(name) != 0 || fail_as_system());
}
