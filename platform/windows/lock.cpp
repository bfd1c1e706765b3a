// The lock is a mutex named after the file, because the file itself changes hands in every save.
// Beside it a block of shared memory says which process holds it.
#include "platform/lock.h"

#include "platform/windows/text_conversion.h"

#include <cerrno>
#include <cstring>

#include <windows.h>

namespace {

constexpr DWORD k_path_max = 32768;

HANDLE mutex;
HANDLE mapping;
DWORD *holder;

// As the file functions read the path, which takes no more units than bytes.
std::wstring wide_of(const char *path) {
    std::wstring wide(strlen(path) + 1, L'\0');
    wide.resize(utf16_copy(wide.data(), static_cast<uint32_t>(wide.size()), path));
    return wide;
}

HANDLE open_file(const std::wstring &path, DWORD creation) {
    return CreateFileW(path.c_str(), GENERIC_READ,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, creation,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

LockResult result_of_error() {
    const DWORD code = GetLastError();
    const bool missing = code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND;
    errno = missing ? ENOENT : EACCES;
    return missing ? LockResult::missing : LockResult::failed;
}

// The same for every spelling of the file's path.
std::wstring name_of(HANDLE file) {
    std::wstring path(k_path_max, L'\0');
    path.resize(GetFinalPathNameByHandleW(file, path.data(), k_path_max, 0));
    CharLowerBuffW(path.data(), static_cast<DWORD>(path.size()));
    uint64_t hash = 14695981039346656037U;
    for (const wchar_t unit : path) {
        hash = (hash ^ unit) * 1099511628211U;
    }
    return L"Quorvane-" + std::to_wstring(hash);
}

bool is_empty(const char *path) {
    WIN32_FILE_ATTRIBUTE_DATA about = {};
    return GetFileAttributesExW(wide_of(path).c_str(), GetFileExInfoStandard, &about) != 0 &&
           about.nFileSizeHigh == 0 && about.nFileSizeLow == 0;
}

void map_holder(const std::wstring &name) {
    mapping = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof *holder,
                                 (name + L"-holder").c_str());
    if (mapping != nullptr) {
        holder =
            static_cast<DWORD *>(MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, sizeof *holder));
    }
}

// A program that died with the lock leaves it to the next one.
LockResult wait_for(const std::wstring &name, uint32_t milliseconds) {
    mutex = CreateMutexW(nullptr, FALSE, name.c_str());
    if (mutex == nullptr) {
        return result_of_error();
    }
    map_holder(name);
    const DWORD answer = WaitForSingleObject(mutex, milliseconds);
    if (answer != WAIT_OBJECT_0 && answer != WAIT_ABANDONED) {
        CloseHandle(mutex);
        mutex = nullptr;
        return LockResult::busy;
    }
    if (holder != nullptr) {
        *holder = GetCurrentProcessId();
    }
    return LockResult::held;
}

}  // namespace

LockResult lock_file(const char *path, uint32_t milliseconds) {
    const HANDLE file = open_file(wide_of(path), OPEN_EXISTING);
    if (file == INVALID_HANDLE_VALUE) {
        return result_of_error();
    }
    const bool on_disk = GetFileType(file) == FILE_TYPE_DISK;
    const std::wstring name = on_disk ? name_of(file) : L"";
    CloseHandle(file);
    return on_disk ? wait_for(name, milliseconds) : LockResult::held;
}

LockResult lock_new_file(const char *path) {
    const HANDLE file = open_file(wide_of(path), CREATE_NEW);
    if (file == INVALID_HANDLE_VALUE) {
        const DWORD code = GetLastError();
        const bool exists = code == ERROR_FILE_EXISTS || code == ERROR_ALREADY_EXISTS;
        return exists ? LockResult::busy : (result_of_error(), LockResult::failed);
    }
    const std::wstring name = name_of(file);
    CloseHandle(file);
    const LockResult result = wait_for(name, 0);
    if (result == LockResult::held && !is_empty(path)) {
        unlock_file();
        return LockResult::busy;
    }
    return result;
}

void unlock_file() {
    if (mutex == nullptr) {
        return;
    }
    ReleaseMutex(mutex);
    CloseHandle(mutex);
    mutex = nullptr;
}

std::string lock_holder() {
    return holder != nullptr && *holder != 0 ? "a program (process " + std::to_string(*holder) + ")"
                                             : "another program";
}
