#include "tests/handheld/pretended_files.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <filesystem>
#include <fstream>
#include <map>
#include <unistd.h>
#include <vector>

#include <windows.h>

namespace fs = std::filesystem;

constexpr size_t k_found_name = 40;  // where the name is in what a search finds

static struct PretendedFiles {
    Mishap mishap;
    int calls;  // before it
    bool happened;
    bool temporary_folder;
    int temporary_names;
    DWORD error;
    std::map<std::string, DWORD> attributes;  // where they are not just those of a file
} files;

namespace {

bool fails_with(DWORD error) {
    files.error = error;
    return false;
}

// True when the call may do its work.
bool call_passes() {
    if (files.mishap == Mishap::none || files.calls-- > 0) {
        return true;
    }
    files.happened = true;
    if (files.mishap == Mishap::killed) {
        _exit(0);
    }
    if (files.mishap == Mishap::refused) {
        files.mishap = Mishap::none;
    }
    return fails_with(ERROR_WRITE_PROTECT);
}

bool is_there(const wchar_t *name) {
    return fs::exists(host_path(name));
}

bool can_be_made(const wchar_t *name) {
    return fs::exists(fs::path(host_path(name)).parent_path());
}

DWORD attributes_of(const wchar_t *name) {
    const std::string path = host_path(name);
    if (!fs::exists(path)) {
        fails_with(ERROR_FILE_NOT_FOUND);
        return INVALID_FILE_ATTRIBUTES;
    }
    if (fs::is_directory(path)) {
        return FILE_ATTRIBUTE_DIRECTORY;
    }
    const auto found = files.attributes.find(path);
    return found != files.attributes.end() ? found->second : FILE_ATTRIBUTE_NORMAL;
}

int descriptor_of(HANDLE file) {
    return static_cast<int>(reinterpret_cast<intptr_t>(file));
}

}  // namespace

void pretend_mishap(Mishap mishap, int calls, bool with_temporary_folder) {
    files.mishap = mishap;
    files.calls = calls;
    files.happened = mishap == Mishap::none;
    files.temporary_folder = with_temporary_folder;
}

bool mishap_happened() {
    return files.happened;
}

void pretend_empty_root() {
    fs::remove_all(host_path(L"\\"));
    files = {};
    pretend_mishap(Mishap::none, 0, true);
    fs::create_directories(host_path(L"\\Notes"));
    fs::create_directories(host_path(L"\\Temp"));
}

std::string host_path(const std::wstring &name) {
    std::string path = HANDHELD_TEST_SCRATCH + std::string(name.begin(), name.end());
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

void set_attributes(const std::wstring &name, uint32_t attributes) {
    files.attributes[host_path(name)] = attributes;
}

DWORD GetLastError() {
    return files.error;
}

BOOL SHGetSpecialFolderPath(HWND, wchar_t *path, int, BOOL) {
    const std::wstring folder = L"\\Notes";
    *std::copy(folder.begin(), folder.end(), path) = 0;
    return 1;
}

DWORD GetFileAttributesW(const wchar_t *name) {
    return call_passes() ? attributes_of(name) : INVALID_FILE_ATTRIBUTES;
}

HANDLE CreateFileW(const wchar_t *name, DWORD access, DWORD, void *, DWORD disposition,
                   DWORD attributes, HANDLE) {
    if (!call_passes()) {
        return INVALID_HANDLE_VALUE;
    }
    const bool found = is_there(name);
    DWORD const now = found ? attributes_of(name) : 0;
    if (disposition == CREATE_NEW ? found || !can_be_made(name) : !found) {
        fails_with(found ? ERROR_FILE_EXISTS : ERROR_FILE_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    if ((access & GENERIC_WRITE) != 0 &&
        (now & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0) {
        fails_with(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    }
    if (!found) {
        std::ofstream(host_path(name)).flush();
        files.attributes[host_path(name)] = attributes;
    }
    return nullptr;
}

BOOL CloseHandle(HANDLE) {
    return 1;
}

BOOL MoveFileW(const wchar_t *name, const wchar_t *new_name) {
    if (!call_passes()) {
        return FALSE;
    }
    if (!is_there(name) || is_there(new_name)) {
        fails_with(is_there(name) ? ERROR_ALREADY_EXISTS : ERROR_FILE_NOT_FOUND);
        return FALSE;
    }
    fs::rename(host_path(name), host_path(new_name));
    const auto row = files.attributes.extract(host_path(name));
    files.attributes[host_path(new_name)] = row ? row.mapped() : FILE_ATTRIBUTE_NORMAL;
    return 1;
}

BOOL DeleteFileW(const wchar_t *name) {
    if (!call_passes()) {
        return FALSE;
    }
    files.attributes.erase(host_path(name));
    return fs::remove(host_path(name)) || fails_with(ERROR_FILE_NOT_FOUND) ? 1 : FALSE;
}

// A search sees the folder as it was when it began.
using Search = std::vector<fs::path>;
static std::vector<Search> searches;  // with the names to come at the end of each

HANDLE FindFirstFileW(const wchar_t *pattern, WIN32_FIND_DATAW *found) {
    const fs::path folder = fs::path(host_path(pattern)).parent_path();
    Search search;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder)) {
        search.push_back(entry.path());
    }
    std::sort(search.rbegin(), search.rend());
    searches.push_back(search);
    HANDLE handle = reinterpret_cast<HANDLE>(searches.size());
    if (FindNextFileW(handle, found) == 0) {
        FindClose(handle);
        return INVALID_HANDLE_VALUE;
    }
    return handle;
}

BOOL FindNextFileW(HANDLE handle, WIN32_FIND_DATAW *found) {
    Search &search = searches.at(reinterpret_cast<size_t>(handle) - 1);
    if (search.empty()) {
        return FALSE;
    }
    const fs::path path = search.back();
    search.pop_back();
    const auto row = files.attributes.find(path.string());
    DWORD const plain = fs::is_directory(path) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL;
    DWORD const attributes = row != files.attributes.end() ? row->second : plain;
    memcpy(found, &attributes, sizeof attributes);
    wchar_t *name = reinterpret_cast<wchar_t *>(reinterpret_cast<char *>(found) + k_found_name);
    wcscpy(name, path.filename().wstring().c_str());
    return 1;
}

// The last that was begun is the first to end.
BOOL FindClose(HANDLE handle) {
    searches.resize(reinterpret_cast<size_t>(handle) - 1);
    return 1;
}

DWORD GetTempPathW(DWORD, wchar_t *folder) {
    if (!call_passes()) {
        return 0;
    }
    const std::wstring name = L"\\Temp\\";
    *std::copy(name.begin(), name.end(), folder) = 0;
    return files.temporary_folder ? static_cast<DWORD>(name.size()) : 0;
}

DWORD GetTempFileNameW(const wchar_t *folder, const wchar_t *prefix, DWORD, wchar_t *name) {
    if (!call_passes()) {
        return 0;
    }
    const std::wstring made =
        folder + std::wstring(prefix) + std::to_wstring(++files.temporary_names);
    std::ofstream(host_path(made)).flush();
    *std::copy(made.begin(), made.end(), name) = 0;
    return 1;
}

FILE *_wfopen(const wchar_t *name, const wchar_t *mode) {
    if (!call_passes()) {
        return nullptr;
    }
    const std::wstring wide(mode);
    FILE *file = fopen(host_path(name).c_str(), std::string(wide.begin(), wide.end()).c_str());
    if (file == nullptr) {
        fails_with(ERROR_FILE_NOT_FOUND);
    }
    return file;
}

int _fileno(FILE *file) {
    return fileno(file);
}

BOOL FlushFileBuffers(HANDLE) {
    return call_passes() ? 1 : FALSE;
}

DWORD SetFilePointer(HANDLE file, long distance, long *, DWORD) {
    if (!call_passes()) {
        return INVALID_SET_FILE_POINTER;
    }
    return static_cast<DWORD>(lseek(descriptor_of(file), distance, SEEK_SET));
}

BOOL SetEndOfFile(HANDLE file) {
    const off_t end = lseek(descriptor_of(file), 0, SEEK_CUR);
    return call_passes() && ftruncate(descriptor_of(file), end) == 0 ? 1 : FALSE;
}
