#include "platform/editor.h"

#include "platform/windows/text_conversion.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <windows.h>

namespace {

constexpr unsigned k_tries = 1000;  // names for the temporary file

std::string utf8_of(const wchar_t *text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), size, nullptr, nullptr);
    bytes.pop_back();
    return bytes;
}

std::wstring wide_of(const std::string &text) {
    std::wstring wide(text.size() + 1, L'\0');
    wide.resize(utf16_copy(wide.data(), static_cast<uint32_t>(wide.size()), text.c_str()));
    return wide;
}

// The user's own folder: nobody else may look into it.
std::wstring temporary_folder() {
    wchar_t folder[MAX_PATH + 1] = {};
    return GetTempPathW(MAX_PATH + 1, folder) != 0 ? folder : L".\\";
}

}  // namespace

std::string editor_command() {
    for (const wchar_t *name : {L"VISUAL", L"EDITOR"}) {
        const wchar_t *command = _wgetenv(name);
        if (command != nullptr && *command != 0) {
            return utf8_of(command);
        }
    }
    return "notepad";
}

std::string private_text_file() {
    const std::wstring folder = temporary_folder();
    for (unsigned i = 0; i < k_tries; ++i) {
        const std::wstring path = folder + L"qvx-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                                  std::to_wstring(i) + L".txt";
        const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE) {
            CloseHandle(file);
            return utf8_of(path.c_str());
        }
        if (GetLastError() != ERROR_FILE_EXISTS) {
            break;
        }
    }
    errno = EACCES;
    return "";
}

// The shell takes the outer quotes away.
int run_on_file(const std::string &command, const std::string &path, bool (*)()) {
    return _wsystem((L"\"" + wide_of(command) + L" \"" + wide_of(path) + L"\"\"").c_str());
}
