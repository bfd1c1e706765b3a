#include "platform/program.h"

#include <cstdio>

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

const bool k_native_crlf = true;
const char *const k_standard_input_path = "";

namespace {

std::string utf8_of(const wchar_t *text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 1) {
        return {};
    }
    std::string bytes(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), size, nullptr, nullptr);
    bytes.pop_back();
    return bytes;
}

}  // namespace

// The C library's own arguments are in the code page of the day and have their wildcards expanded.
std::vector<std::string> program_arguments(int, char **) {
    std::vector<std::string> arguments;
    int count = 0;
    wchar_t **const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; wide != nullptr && i < count; ++i) {
        arguments.push_back(utf8_of(wide[i]));
    }
    LocalFree(wide);
    return arguments;
}

bool output_is_terminal() {
    return _isatty(_fileno(stdout)) != 0;
}

void standard_streams_binary() {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}
