#include "cli/browse/edit_text.h"

#include "cli/browse/terminal.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr char k_suffix[] = ".txt";

const char *editor() {
    for (const char *name : {"VISUAL", "EDITOR"}) {
        const char *value = getenv(name);
        if (value != nullptr && *value != 0) {
            return value;
        }
    }
    return "vi";
}

// Makes a file that only this user can read; its path, or "".
std::string make_file(const std::string &text) {
    std::error_code error;
    std::string path = (fs::temp_directory_path(error) / "qvx-XXXXXX").string() + k_suffix;
    const int file = mkstemps(path.data(), sizeof k_suffix - 1);
    if (file < 0) {
        return "";
    }
    close(file);
    std::ofstream stream(path, std::ios::binary);
    stream << text;
    stream.close();
    if (stream.fail()) {
        unlink(path.c_str());
        return "";
    }
    return path;
}

bool read_file(const std::string &path, std::string *text) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        return false;
    }
    text->assign(std::istreambuf_iterator<char>(stream), {});
    return !stream.bad();
}

// The value may be a command with arguments, so that a shell takes it.
[[noreturn]] void become_editor(const std::string &path) {
    for (const int number : {SIGINT, SIGQUIT, SIGTERM, SIGHUP}) {
        signal(number, SIG_DFL);
    }
    const std::string command = std::string(editor()) + " \"$1\"";
    execl("/bin/sh", "sh", "-c", command.c_str(), "sh", path.c_str(), static_cast<char *>(nullptr));
    _exit(127);
}

// What ends this program ends the editor, too: the terminal has gone, or the user's session. Other
// signals, of a terminal that has another size now, are none of its business.
bool editor_succeeds(const std::string &path) {
    const pid_t child = fork();
    if (child < 0) {
        return false;
    }
    if (child == 0) {
        become_editor(path);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return false;
        }
        if (terminal_hung_up() != 0) {
            kill(child, SIGHUP);
        }
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

bool browse_edit_text(std::string *text, std::string *left) {
    left->clear();
    const std::string path = make_file(*text);
    if (path.empty()) {
        return false;
    }
    const bool succeeded = editor_succeeds(path);
    std::string edited;
    const bool read = read_file(path, &edited);
    if (read && (succeeded || edited == *text)) {
        *text = edited;
        unlink(path.c_str());
        return succeeded;
    }
    *left = path;
    return false;
}
