#include "platform/editor.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr const char *k_suffix = ".txt";
constexpr int k_suffix_length = 4;

bool is_on_path(const char *program) {
    const char *path = getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "/usr/bin:/bin");
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (access((fs::path(folder) / program).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

std::string quoted(const std::string &path) {
    std::string word = "'";
    for (const char ch : path) {
        word += ch == '\'' ? std::string("'\\''") : std::string(1, ch);
    }
    return word + "'";
}

}  // namespace

std::string editor_command() {
    for (const char *name : {"VISUAL", "EDITOR"}) {
        const char *command = getenv(name);
        if (command != nullptr && *command != 0) {
            return command;
        }
    }
    for (const char *program : {"vi", "nano"}) {
        if (is_on_path(program)) {
            return program;
        }
    }
    return "";
}

std::string private_text_file() {
    std::error_code error;
    const fs::path folder = fs::temp_directory_path(error);
    std::string path = ((error ? "/tmp" : folder) / "qvx-XXXXXX").string() + k_suffix;
    const int file = mkstemps(path.data(), k_suffix_length);
    if (file < 0) {
        return "";
    }
    close(file);
    return path;
}

int run_on_file(const std::string &command, const std::string &path) {
    const int status = std::system((command + " " + quoted(path)).c_str());
    if (status == -1) {
        return -1;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}
