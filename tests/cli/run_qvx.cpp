#include "tests/cli/run_qvx.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <fcntl.h>
#include <grp.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// A folder of this process below the build's, gone when the process ends.
const std::filesystem::path &scratch_folder() {
    static std::filesystem::path folder;
    if (folder.empty()) {
        std::string name = QVX_SCRATCH "XXXXXX";
        folder = mkdtemp(name.data());
        std::atexit([] {
            std::error_code ignored;
            std::filesystem::current_path("/", ignored);
            std::filesystem::remove_all(folder, ignored);
        });
    }
    return folder;
}

std::string stream_path(const char *name) {
    return (scratch_folder() / name).string();
}

void redirect(int stream, const std::string &path, int flags) {
    const int file = open(path.c_str(), flags, 0600);
    if (file < 0 || dup2(file, stream) < 0) {
        _exit(126);
    }
    close(file);
}

constexpr unsigned k_nobody = 65534;

struct Start {
    const std::vector<std::string> &arguments;
    long file_limit;
    bool as_nobody;
};

[[noreturn]] void become_qvx(const Start &start) {
    redirect(0, stream_path("stdin"), O_RDONLY);
    redirect(1, stream_path("stdout"), O_WRONLY | O_CREAT | O_TRUNC);
    redirect(2, stream_path("stderr"), O_WRONLY | O_CREAT | O_TRUNC);
    if (start.file_limit > 0) {
        const auto size = static_cast<rlim_t>(start.file_limit);
        const rlimit limit{size, size};
        setrlimit(RLIMIT_FSIZE, &limit);
        signal(SIGXFSZ, SIG_IGN);
    }
    if (start.as_nobody && geteuid() == 0 &&
        (setgroups(0, nullptr) != 0 || setgid(k_nobody) != 0 || setuid(k_nobody) != 0)) {
        _exit(126);
    }
    std::vector<char *> argv{const_cast<char *>(QVX_PATH)};
    for (const std::string &argument : start.arguments) {
        argv.push_back(const_cast<char *>(argument.c_str()));
    }
    argv.push_back(nullptr);
    execv(QVX_PATH, argv.data());
    _exit(127);
}

Outcome run_to_end(const Start &start) {
    const pid_t child = fork();
    if (child == 0) {
        become_qvx(start);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
            file_bytes(stream_path("stdout")), file_bytes(stream_path("stderr"))};
}

}  // namespace

Outcome run_qvx(const std::vector<std::string> &arguments, const std::string &input,
                long file_limit) {
    write_file(stream_path("stdin"), input);
    return run_to_end({arguments, file_limit, false});
}

Outcome run_qvx_as_nobody(const std::vector<std::string> &arguments, long file_limit) {
    write_file(stream_path("stdin"), "");
    return run_to_end({arguments, file_limit, true});
}

void run_and_kill_qvx(const std::vector<std::string> &arguments, unsigned microseconds) {
    const pid_t child = fork();
    if (child == 0) {
        become_qvx({arguments, 0, false});
    }
    usleep(microseconds);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
}

void enter_empty_folder() {
    const std::filesystem::path folder = scratch_folder() / "work";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    std::filesystem::current_path(folder);
}

std::string file_bytes(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return "(none)";
    }
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

void write_file(const std::string &path, const std::string &bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}
