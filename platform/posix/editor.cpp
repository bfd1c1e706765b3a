#include "platform/editor.h"

#include <cerrno>
#include <csignal>
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

// The shell puts the path behind whatever the command has.
[[noreturn]] void become(const std::string &command, const std::string &path) {
    signal(SIGINT, SIG_DFL);
    signal(SIGQUIT, SIG_DFL);
    const std::string line = command + " \"$1\"";
    execl("/bin/sh", "sh", "-c", line.c_str(), "sh", path.c_str(), static_cast<char *>(nullptr));
    _exit(127);
}

int status_of_child(pid_t child, bool (*must_end)()) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return -1;
        }
        if (must_end != nullptr && must_end()) {
            kill(child, SIGHUP);
        }
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
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

int run_on_file(const std::string &command, const std::string &path, bool (*must_end)()) {
    struct sigaction ignore = {};
    struct sigaction interrupt = {};
    struct sigaction quit = {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGINT, &ignore, &interrupt);
    sigaction(SIGQUIT, &ignore, &quit);
    const pid_t child = fork();
    if (child == 0) {
        become(command, path);
    }
    const int status = child > 0 ? status_of_child(child, must_end) : -1;
    sigaction(SIGINT, &interrupt, nullptr);
    sigaction(SIGQUIT, &quit, nullptr);
    return status;
}
