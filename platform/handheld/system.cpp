// Files as the handheld has them: absolute paths alone, no links, no rights, and no rename over a
// file that is there.
#include "platform/system.h"

#include "core/host_files.h"
#include "platform/windows/common.h"
#include "platform/windows/text_conversion.h"

#include <cerrno>
#include <cstring>
#include <cwchar>

#include <windows.h>

// NOLINTNEXTLINE(readability-identifier-naming): the system's name, which has no W there
extern "C" BOOL SHGetSpecialFolderPath(HWND owner, wchar_t *path, int folder, BOOL create);

namespace {

constexpr DWORD k_share_all = FILE_SHARE_READ | FILE_SHARE_WRITE;

// Where the old version stands while the new one takes its name.
constexpr const char *k_aside_suffix = "-aside";

constexpr int k_documents_folder = 5;  // as the system numbers it

// The system's name for it is the user's language's.
uint32_t documents_path(wchar_t *to) {
    if (SHGetSpecialFolderPath(nullptr, to, k_documents_folder, FALSE) == FALSE || *to != L'\\') {
        wcscpy(to, L"\\My Documents");
    }
    wcscat(to, L"\\");
    return static_cast<uint32_t>(wcslen(to));
}

bool is_device(const char *path) {
    const size_t length = strlen(path);
    return length > 0 && path[length - 1] == ':';
}

bool aside_path(char *aside, const char *target) {
    if (strlen(target) + strlen(k_aside_suffix) >= k_system_path_max) {
        errno = ENAMETOOLONG;
        return false;
    }
    strcpy(aside, target);
    strcat(aside, k_aside_suffix);
    return true;
}

bool is_there(const char *path) {
    const wchar_t *name = wide_path(path);
    return name != nullptr && GetFileAttributesW(name) != INVALID_FILE_ATTRIBUTES;
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

// Opened as what it is, so that it keeps its attributes.
FILE *create_new(const wchar_t *name, DWORD attributes) {
    HANDLE file = CreateFileW(name, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                              attributes, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        fail_as_system();
        return nullptr;
    }
    CloseHandle(file);
    FILE *stream = open_stream(name, "r+b");
    if (stream == nullptr) {
        DeleteFileW(name);
    }
    return stream;
}

// Of the file at a path, for a new one in its place.
DWORD attributes_like(const char *model) {
    const wchar_t *name = model != nullptr ? wide_path(model) : nullptr;
    const DWORD attributes = name != nullptr ? GetFileAttributesW(name) : INVALID_FILE_ATTRIBUTES;
    constexpr DWORD k_users =
        FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    const DWORD kept = attributes != INVALID_FILE_ATTRIBUTES ? attributes & k_users : 0;
    return kept != 0 ? kept : FILE_ATTRIBUTE_NORMAL;
}

// The stream's own handle is the system's: there are no descriptors between them.
HANDLE handle_of(FILE *file) {
    return reinterpret_cast<HANDLE>(static_cast<intptr_t>(_fileno(file)));
}

}  // namespace

// A path that does not begin at the root is in the folder of documents, which is what the file
// dialogs show.
uint32_t wide_path_start(wchar_t *to, const char **path) {
    if (**path == '\\' || is_device(*path)) {
        return 0;
    }
    *path += strncmp(*path, ".\\", 2) == 0 ? 2 : 0;
    return documents_path(to);
}

FILE *file_open(const char *path, const char *mode) {
    const wchar_t *name = wide_path(path);
    return name != nullptr ? open_stream(name, mode) : nullptr;
}

// Both are whole when nothing is at the path. The old version alone stands there when the new one
// could not take its name, nor the old one its own again.
const char *file_successor(const char *path) {
    static char successor[k_system_path_max];
    if (system_next_path(successor, path) && is_there(successor)) {
        return successor;
    }
    return aside_path(successor, path) && is_there(successor) ? successor : "";
}

bool file_move(const char *from, const char *to) {
    const wchar_t *name = wide_path(from);
    const wchar_t *new_name = wide_path(to, k_wide_other);
    return name != nullptr && new_name != nullptr &&
           (MoveFileW(name, new_name) != 0 || fail_as_system());
}

FileKind system_look(const char *path, char *target) {
    const wchar_t *name = wide_path(path);
    if (name == nullptr) {
        return FileKind::refused;
    }
    strcpy(target, path);
    if (is_device(path)) {
        return FileKind::device;
    }
    if (GetFileAttributesW(name) == INVALID_FILE_ATTRIBUTES) {
        fail_as_system();
        return errno == ENOENT ? FileKind::missing : FileKind::refused;
    }
    HANDLE file = CreateFileW(name, GENERIC_READ | GENERIC_WRITE, k_share_all, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        fail_as_system();
        return FileKind::refused;
    }
    CloseHandle(file);
    return FileKind::plain;
}

// One program runs at a time, so that what is at the path of a next version was left by one that
// was killed.
FILE *system_create(const char *path, const char *model, bool exactly) {
    const DWORD attributes = attributes_like(model);
    const wchar_t *name = wide_path(path);
    if (name == nullptr) {
        return nullptr;
    }
    if (exactly) {
        DeleteFileW(name);
    }
    return create_new(name, attributes);
}

// Names here do not tell their makers, so nothing is removed.
FILE *system_create_temporary(char *path, bool) {
    wchar_t folder[MAX_PATH + 1];
    wchar_t name[MAX_PATH + 1];
    if (GetTempPathW(MAX_PATH + 1, folder) == 0 || GetTempFileNameW(folder, L"qvx", 0, name) == 0) {
        fail_as_system();
        return nullptr;
    }
    utf8_copy(path, k_system_path_max, name);
    return open_stream(name, "w+b");
}

// A file system that writes everything at once may know nothing to do here.
bool system_to_disk(FILE *file) {
    if (fflush(file) != 0) {
        return false;
    }
    return FlushFileBuffers(handle_of(file)) != 0 || GetLastError() == ERROR_NOT_SUPPORTED ||
           fail_as_system();
}

bool system_cut(FILE *file, long length) {
    if (fflush(file) != 0) {
        return false;
    }
    return (SetFilePointer(handle_of(file), length, nullptr, FILE_BEGIN) !=
                INVALID_SET_FILE_POINTER &&
            SetEndOfFile(handle_of(file)) != 0) ||
           fail_as_system();
}

// At every moment there is a whole version under one of three names, and file_successor() finds it.
bool system_put_over(const char *next, const char *target) {
    static char aside[k_system_path_max];
    if (!aside_path(aside, target)) {
        return false;
    }
    const bool replaced = is_there(target);
    if (replaced) {
        system_remove(aside);
        if (!file_move(target, aside)) {
            return false;
        }
    }
    if (!file_move(next, target)) {
        const int reason = errno;
        if (replaced) {
            file_move(aside, target);
        }
        errno = reason;
        return false;
    }
    system_remove(aside);
    return true;
}
