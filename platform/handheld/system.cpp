// Files as the handheld has them: absolute paths alone, no links, no rights, and no rename over a
// file that is there.
#include "platform/system.h"

#include "core/host_files.h"
#include "platform/windows/text_conversion.h"

#include <cerrno>
#include <cstring>

#include <windows.h>

const char k_path_separator = '\\';

namespace {

constexpr const char *k_next_suffix = "-new";
constexpr const wchar_t *k_aside_suffix = L"-aside";
constexpr uint32_t k_wide_path_max = MAX_PATH;
constexpr DWORD k_changed_attributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

static struct WidePaths {
    wchar_t one[k_wide_path_max];
    wchar_t other[k_wide_path_max];
    wchar_t aside[k_wide_path_max];
} wide;

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

bool fail_as_system() {
    DWORD const code = GetLastError();
    errno = EIO;
    for (const auto &row : k_reasons) {
        if (row.code == code) {
            errno = row.reason;
        }
    }
    return false;
}

constexpr const wchar_t *k_documents = L"\\My Documents\\";

// Null for a path that is too long, which is never cut. One that does not begin at the root is in
// the folder of documents.
const wchar_t *wide_path(const char *path, wchar_t *to = wide.one) {
    uint32_t length = 0;
    if (*path != '\\') {
        path += strncmp(path, ".\\", 2) == 0 ? 2 : 0;
        wcscpy(to, k_documents);
        length = static_cast<uint32_t>(wcslen(to));
    }
    if (strlen(path) + length >= k_wide_path_max) {
        errno = ENAMETOOLONG;
        return nullptr;
    }
    utf16_copy(to + length, k_wide_path_max - length, path);
    return to;
}

bool is_there(const wchar_t *name) {
    return GetFileAttributesW(name) != INVALID_FILE_ATTRIBUTES;
}

FILE *open_stream(const wchar_t *name, const char *mode) {
    wchar_t wide_mode[8];
    utf16_copy(wide_mode, 8, mode);
    FILE *file = _wfopen(name, wide_mode);
    if (file == nullptr) {
        fail_as_system();
    }
    return file;
}

}  // namespace

FILE *file_open(const char *path, const char *mode) {
    const wchar_t *name = wide_path(path);
    return name != nullptr ? open_stream(name, mode) : nullptr;
}

const char *file_successor(const char *path) {
    static char next[k_system_path_max];
    return system_next_path(next, path) ? next : "";
}

bool file_move(const char *from, const char *to) {
    const wchar_t *name = wide_path(from);
    const wchar_t *new_name = wide_path(to, wide.other);
    if (name == nullptr || new_name == nullptr) {
        return false;
    }
    return MoveFileW(name, new_name) != 0 || fail_as_system();
}

FileKind system_look(const char *path, char *target) {
    const wchar_t *name = wide_path(path);
    if (name == nullptr) {
        return FileKind::refused;
    }
    strcpy(target, path);
    DWORD const attributes = GetFileAttributesW(name);
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        fail_as_system();
        return errno == ENOENT ? FileKind::missing : FileKind::refused;
    }
    if ((attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0) {
        errno = EACCES;
        return FileKind::refused;
    }
    return (attributes & k_changed_attributes) != 0 ? FileKind::shared : FileKind::plain;
}

FILE *system_create(const char *path, const char *, bool exactly) {
    const wchar_t *name = wide_path(path);
    if (name == nullptr) {
        return nullptr;
    }
    if (exactly) {
        DeleteFileW(name);
    }
    HANDLE file = CreateFileW(name, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        fail_as_system();
        return nullptr;
    }
    CloseHandle(file);
    return open_stream(name, "w+b");
}

FILE *system_create_temporary(char *path, bool) {
    strcpy(path, "\\Temp\\qvx.tmp");
    return system_create(path, nullptr, true);
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

void system_sweep(const char *target) {
    const char *next = file_successor(target);
    if (*next != 0) {
        system_remove(next);
    }
}

void system_sweep_copies(const char *, bool) {}

bool system_to_disk(FILE *file) {
    return fflush(file) == 0;
}

bool system_make_room(FILE *, long) {
    return true;
}

bool system_cut(FILE *file, long) {
    return fflush(file) == 0;
}

bool system_put_over(const char *next, const char *target) {
    const wchar_t *target_name = wide_path(target, wide.other);
    const wchar_t *next_name = wide_path(next);
    if (target_name == nullptr || next_name == nullptr) {
        return false;
    }
    wcscpy(wide.aside, target_name);
    wcscat(wide.aside, k_aside_suffix);
    if (is_there(target_name)) {
        DeleteFileW(wide.aside);
        if (MoveFileW(target_name, wide.aside) == 0) {
            return fail_as_system();
        }
    }
    if (MoveFileW(next_name, target_name) == 0) {
        fail_as_system();
        MoveFileW(wide.aside, target_name);
        return false;
    }
    DeleteFileW(wide.aside);
    return true;
}

bool system_remove(const char *path) {
    const wchar_t *name = wide_path(path);
    return name != nullptr && (DeleteFileW(name) != 0 || fail_as_system());
}
