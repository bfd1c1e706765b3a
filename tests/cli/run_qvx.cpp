#include "tests/cli/run_qvx.h"

#include "tests/support/scratch.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <grp.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

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

[[noreturn]] void become_qvx(const std::vector<std::string> &arguments, const std::string &output,
                             const Circumstances &in) {
    redirect(0, stream_path("stdin"), O_RDONLY);
    redirect(1, output, O_WRONLY | O_CREAT | O_TRUNC | O_NOCTTY);
    redirect(2, stream_path("stderr"), O_WRONLY | O_CREAT | O_TRUNC);
    if (in.file_limit > 0) {
        const rlimit limit{in.file_limit, in.file_limit};
        setrlimit(RLIMIT_FSIZE, &limit);
        signal(SIGXFSZ, SIG_IGN);
    }
    if (in.as_nobody && geteuid() == 0 &&
        (setgroups(0, nullptr) != 0 || setgid(k_nobody) != 0 || setuid(k_nobody) != 0)) {
        _exit(126);
    }
    std::vector<char *> argv{const_cast<char *>(QVX_PATH)};
    for (const std::string &argument : arguments) {
        argv.push_back(const_cast<char *>(argument.c_str()));
    }
    argv.push_back(nullptr);
    execv(QVX_PATH, argv.data());
    _exit(127);
}

int run_to_end(const std::vector<std::string> &arguments, const std::string &output,
               const Circumstances &in) {
    const pid_t child = fork();
    if (child == 0) {
        become_qvx(arguments, output, in);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace

Outcome run_qvx(const std::vector<std::string> &arguments, const std::string &input,
                const Circumstances &in) {
    write_file(stream_path("stdin"), input);
    const int status = run_to_end(arguments, stream_path("stdout"), in);
    return {status, file_bytes(stream_path("stdout")), file_bytes(stream_path("stderr"))};
}

std::string qvx_on_terminal(const std::vector<std::string> &arguments) {
    write_file(stream_path("stdin"), "");
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0) {
        return "no terminal";
    }
    run_to_end(arguments, ptsname(terminal), {});
    std::string bytes(4096, '\0');
    const ssize_t n = read(terminal, bytes.data(), bytes.size());
    close(terminal);
    bytes.resize(static_cast<size_t>(n < 0 ? 0 : n));
    return bytes;
}

void enter_empty_folder() {
    const fs::path folder = scratch_folder() / "work";
    fs::remove_all(folder);
    fs::create_directory(folder);
    fs::current_path(folder);
}
