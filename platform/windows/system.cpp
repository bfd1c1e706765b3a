// Files as desktop Windows has them: what platform/windows/common.cpp leaves.
#include "platform/system.h"

#include "core/host_files.h"
#include "platform/windows/common.h"
#include "platform/windows/text_conversion.h"

#include <cerrno>
#include <cstring>

#include <windows.h>

#include <fcntl.h>
#include <io.h>

namespace {

constexpr DWORD k_share_all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Somebody who looks into every new file holds it for a moment.
constexpr int k_tries = 50;
constexpr DWORD k_try_milliseconds = 20;

FILE *stream_of(HANDLE file, const char *mode, int flags) {
    if (file == INVALID_HANDLE_VALUE) {
        fail_as_system();
        return nullptr;
    }
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(file), flags | _O_BINARY);
    return _fdopen(descriptor, mode);
}

HANDLE handle_of(FILE *file) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
}

bool is_transient(DWORD code) {
    return code == ERROR_SHARING_VIOLATION || code == ERROR_ACCESS_DENIED ||
           code == ERROR_USER_MAPPED_FILE;
}

// A file that is read at this moment lets itself be replaced; one that is being looked through by
// something else may not.
bool put_over(const wchar_t *next, const wchar_t *target) {
    for (int i = 0; i < k_tries; ++i) {
        if (ReplaceFileW(target, next, nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr,
                         nullptr) != 0) {
            return true;
        }
        if (!is_transient(GetLastError())) {
            break;
        }
        Sleep(k_try_milliseconds);
    }
    return MoveFileExW(next, target, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

constexpr DWORD k_rights_max = 2048;

// NOLINTNEXTLINE(misc-redundant-expression): the system's own sets overlap
constexpr DWORD k_own_rights = FILE_GENERIC_READ | FILE_GENERIC_WRITE | DELETE | READ_CONTROL;

// Who may do what with a file: bytes that can be compared, and how many they would be.
struct Rights {
    alignas(void *) char bytes[k_rights_max];
    DWORD size;
};

void read_rights(const wchar_t *name, Rights *rights) {
    rights->size = 0;
    GetFileSecurityW(name, DACL_SECURITY_INFORMATION, rights->bytes, k_rights_max, &rights->size);
}

bool same_rights(const wchar_t *name, const wchar_t *other) {
    static Rights one;
    static Rights two;
    read_rights(name, &one);
    read_rights(other, &two);
    return one.size == two.size && one.size <= k_rights_max &&
           memcmp(one.bytes, two.bytes, one.size) == 0;
}

// What lets this user alone at a new file; null, which lets in whom the folder says, when the
// system does not tell who that is.
SECURITY_ATTRIBUTES *private_rights() {
    alignas(void *) static char user[256];
    alignas(void *) static char list[256];
    static SECURITY_DESCRIPTOR descriptor;
    static SECURITY_ATTRIBUTES attributes = {sizeof attributes, &descriptor, FALSE};
    HANDLE token = nullptr;
    DWORD size = 0;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) == 0) {
        return nullptr;
    }
    bool known = GetTokenInformation(token, TokenUser, user, sizeof user, &size) != 0;
    CloseHandle(token);
    ACL *allowed = reinterpret_cast<ACL *>(list);
    known = known && InitializeAcl(allowed, sizeof list, ACL_REVISION) != 0 &&
            AddAccessAllowedAce(allowed, ACL_REVISION, k_own_rights,
                                reinterpret_cast<TOKEN_USER *>(user)->User.Sid) != 0 &&
            InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) != 0 &&
            SetSecurityDescriptorDacl(&descriptor, TRUE, allowed, FALSE) != 0;
    return known ? &attributes : nullptr;
}

HANDLE create_new(const wchar_t *name, SECURITY_ATTRIBUTES *security) {
    return CreateFileW(name, GENERIC_READ | GENERIC_WRITE, 0, security, CREATE_NEW,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool final_path(HANDLE file, char *target) {
    static wchar_t found[k_wide_path_max];
    DWORD const length = GetFinalPathNameByHandleW(file, found, k_wide_path_max, 0);
    if (length == 0 || length >= k_wide_path_max || utf8_size(found) >= k_system_path_max) {
        errno = ENAMETOOLONG;
        return false;
    }
    utf8_copy(target, k_system_path_max, found);
    return true;
}

FileKind kind_of_open(HANDLE file, DWORD attributes, char *target) {
    BY_HANDLE_FILE_INFORMATION about = {};
    if (GetFileType(file) != FILE_TYPE_DISK || GetFileInformationByHandle(file, &about) == 0) {
        return FileKind::device;
    }
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && !final_path(file, target)) {
        return FileKind::refused;
    }
    return about.nNumberOfLinks > 1 ? FileKind::shared : FileKind::plain;
}

}  // namespace

// A path that does not say where it begins is in the current directory.
uint32_t wide_path_start(wchar_t *, const char **) {
    return 0;
}

// Others may replace the file while it is read.
FILE *file_open(const char *path, const char *mode) {
    const wchar_t *name = wide_path(path);
    if (name == nullptr) {
        return nullptr;
    }
    if (*mode != 'r') {
        wchar_t wide_mode[8];
        utf16_copy(wide_mode, 8, mode);
        return _wfopen(name, wide_mode);
    }
    const bool writes = strchr(mode, '+') != nullptr;
    HANDLE file = CreateFileW(name, writes ? GENERIC_READ | GENERIC_WRITE : GENERIC_READ,
                              k_share_all, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    return stream_of(file, mode, writes ? _O_RDWR : _O_RDONLY);
}

const char *file_predecessor(const char *) {
    return "";
}

void file_each_cut_off(void (*)(const char *)) {}

bool file_move(const char *from, const char *to) {
    const wchar_t *name = wide_path(from);
    const wchar_t *new_name = wide_path(to, k_wide_other);
    if (name == nullptr || new_name == nullptr) {
        return false;
    }
    return MoveFileExW(name, new_name, MOVEFILE_WRITE_THROUGH) != 0 || fail_as_system();
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
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        errno = EACCES;
        return FileKind::refused;
    }
    HANDLE file = CreateFileW(name, GENERIC_READ | GENERIC_WRITE, k_share_all, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        fail_as_system();
        return FileKind::refused;
    }
    const FileKind kind = kind_of_open(file, attributes, target);
    CloseHandle(file);
    return kind;
}

// Attributes come from the old file when the new one takes its place; rights that differ from those
// of any new file beside it would not all. What a program that was killed left at the path is
// removed; another one's next version is waited for.
FILE *system_create(const char *path, const char *model, bool exactly) {
    const wchar_t *model_name = model != nullptr ? wide_path(model, k_wide_other) : nullptr;
    const wchar_t *name = wide_path(path);
    if (name == nullptr) {
        return nullptr;
    }
    SECURITY_ATTRIBUTES *rights = model_name != nullptr && !exactly ? private_rights() : nullptr;
    HANDLE file = create_new(name, rights);
    for (int i = 0; exactly && i < k_tries && file == INVALID_HANDLE_VALUE; ++i) {
        if (GetLastError() != ERROR_FILE_EXISTS) {
            break;
        }
        if (DeleteFileW(name) == 0) {
            Sleep(k_try_milliseconds);
        }
        file = create_new(name, rights);
    }
    const bool refused = file != INVALID_HANDLE_VALUE && model_name != nullptr && exactly &&
                         !same_rights(name, model_name);
    if (refused) {
        CloseHandle(file);
        DeleteFileW(name);
        errno = EACCES;
        return nullptr;
    }
    return stream_of(file, "w+b", _O_RDWR);
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
    DeleteFileW(name);  // made to hold the name, with anybody's rights
    return stream_of(create_new(name, private_rights()), "w+b", _O_RDWR);
}

bool system_to_disk(FILE *file) {
    if (fflush(file) != 0) {
        return false;
    }
    return FlushFileBuffers(handle_of(file)) != 0 || fail_as_system();
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

bool system_put_over(const char *next, const char *target) {
    const wchar_t *target_name = wide_path(target, k_wide_other);
    const wchar_t *next_name = wide_path(next);
    if (target_name == nullptr || next_name == nullptr) {
        return false;
    }
    return put_over(next_name, target_name) || fail_as_system();
}
