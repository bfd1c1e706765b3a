// The lock is one on the file itself. A save puts another file in its place, so that after the lock
// was given the path may name a file that nobody has locked yet.
#include "platform/lock.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fstream>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds k_pause(2);

int locked = -1;      // open while the lock is held
struct stat refused;  // the file that somebody else had locked

LockResult result_of_errno() {
    return errno == ENOENT ? LockResult::missing : LockResult::failed;
}

// A lock needs the file open in no particular way; some network file systems want it writable.
int open_for_lock(const char *path) {
    const int file = open(path, O_RDWR | O_CLOEXEC);
    return file >= 0 || errno == ENOENT ? file : open(path, O_RDONLY | O_CLOEXEC);
}

bool still_names(const char *path, int file) {
    struct stat by_path;
    struct stat by_file;
    return stat(path, &by_path) == 0 && fstat(file, &by_file) == 0 &&
           by_path.st_dev == by_file.st_dev && by_path.st_ino == by_file.st_ino;
}

bool is_empty(int file) {
    struct stat status;
    return fstat(file, &status) == 0 && status.st_size == 0;
}

// One attempt; `held` where the path has changed its file means: once more.
LockResult try_lock(const char *path) {
    const int file = open_for_lock(path);
    if (file < 0) {
        return result_of_errno();
    }
    if (flock(file, LOCK_EX | LOCK_NB) != 0) {
        const int reason = errno;
        fstat(file, &refused);
        close(file);
        errno = reason;
        return reason == EWOULDBLOCK ? LockResult::busy : LockResult::failed;
    }
    locked = file;
    return LockResult::held;
}

// The holder of the lock on `refused`, by the system's list of locks; 0 when it does not say.
long holder_process() {
    std::ostringstream id;
    id << std::hex;
    id.fill('0');
    id.width(2);
    id << major(refused.st_dev) << ':';
    id.width(2);
    id << minor(refused.st_dev) << ':' << std::dec << refused.st_ino;
    std::ifstream list("/proc/locks");
    for (std::string line; std::getline(list, line);) {
        std::istringstream words(line);
        std::string number, kind, mode, access, file;
        long process = 0;
        words >> number >> kind >> mode >> access >> process >> file;
        if (kind == "FLOCK" && file == id.str()) {
            return process;
        }
    }
    return 0;
}

}  // namespace

LockResult lock_file(const char *path, uint32_t milliseconds) {
    struct stat status;
    if (stat(path, &status) != 0) {
        return result_of_errno();
    }
    if (!S_ISREG(status.st_mode)) {
        return LockResult::held;
    }
    const auto deadline = Clock::now() + std::chrono::milliseconds(milliseconds);
    for (;;) {
        const LockResult result = try_lock(path);
        if (result == LockResult::held && still_names(path, locked)) {
            return result;
        }
        unlock_file();
        if (result == LockResult::failed ||
            (result == LockResult::busy && Clock::now() > deadline)) {
            return result;
        }
        if (result == LockResult::missing) {
            return result;
        }
        if (result == LockResult::busy) {
            std::this_thread::sleep_for(k_pause);
        }
    }
}

LockResult lock_new_file(const char *path) {
    const int file = open(path, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0) {
        return errno == EEXIST ? LockResult::busy : LockResult::failed;
    }
    locked = file;
    if (flock(file, LOCK_EX | LOCK_NB) == 0 && is_empty(file) && still_names(path, file)) {
        return LockResult::held;
    }
    unlock_file();
    return LockResult::busy;
}

void unlock_file() {
    if (locked >= 0) {
        close(locked);
        locked = -1;
    }
}

std::string lock_holder() {
    const long process = holder_process();
    if (process <= 0) {
        return "another program";
    }
    std::ifstream file("/proc/" + std::to_string(process) + "/comm");
    std::string name;
    std::getline(file, name);
    return (name.empty() ? "a program" : name) + " (process " + std::to_string(process) + ")";
}
