// Saving over files of every kind, and several programs on one file: nothing is lost, whoever is
// killed, refused or late.
#include "tests/cli/run_qvx.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace std::string_literals;

namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

const std::string k_old = "<cell><cname>home</cname><text>old</text></cell></eof>";
constexpr unsigned k_nobody = 65534;

#ifdef __SANITIZE_ADDRESS__
constexpr unsigned k_killed_runs = 60;  // each takes ten times as long
#else
constexpr unsigned k_killed_runs = 400;
#endif

class QvxSaving : public testing::Test {
protected:
    void SetUp() override {
        enter_empty_folder();
        write_file("w.qvx", k_old);
        umount("full");
    }
};

// What is in the current folder.
Names entries() {
    Names names;
    for (const fs::directory_entry &entry : fs::directory_iterator(".")) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> set_home(const std::string &path, const std::string &text = "new") {
    return {"set", path, "home", "--text", text};
}

std::string home_of(const std::string &path) {
    return run_qvx({"show", path, "home"}).out;
}

struct stat status_of(const std::string &path) {
    struct stat status = {};
    stat(path.c_str(), &status);
    return status;
}

// The folder and the file belong to "nobody", who runs qvx.
void give_to_nobody() {
    if (geteuid() == 0) {
        EXPECT_EQ(chown(".", k_nobody, k_nobody), 0);
        EXPECT_EQ(chown("w.qvx", k_nobody, k_nobody), 0);
    }
}

enum class Way { replaced, in_place, refused };

struct Case {
    const char *what;
    std::function<void()> prepare;
    Way way;
    bool needs_root;  // to prepare
};

const Case k_cases[] = {
    {"private", [] { chmod("w.qvx", 0600); }, Way::replaced, false},
    {"for a group", [] { chmod("w.qvx", 0660); }, Way::replaced, false},
    {"read-only", [] { chmod("w.qvx", 0444); }, Way::refused, false},
    {"other names", [] { link("w.qvx", "other.qvx"); }, Way::in_place, false},
    {"the user's own attributes", [] { setxattr("w.qvx", "user.note", "n", 1, 0); }, Way::in_place,
     false},
    {"somebody else's, writable",
     [] {
         chmod("w.qvx", 0666);
         EXPECT_EQ(chown("w.qvx", 1234, 1234), 0);
     },
     Way::in_place, true},
    {"somebody else's, not writable", [] { EXPECT_EQ(chown("w.qvx", 1234, 1234), 0); },
     Way::refused, true},
    {"another group's", [] { EXPECT_EQ(chown("w.qvx", k_nobody, 1234), 0); }, Way::in_place, true},
    {"in a folder without write permission", [] { chmod(".", 0555); }, Way::in_place, false},
};

}  // namespace

TEST_F(QvxSaving, FilesOfEveryKind) {
    for (const Case &c : k_cases) {
        SCOPED_TRACE(c.what);
        if (c.needs_root && geteuid() != 0) {
            continue;
        }
        enter_empty_folder();
        write_file("w.qvx", k_old);
        give_to_nobody();
        c.prepare();
        const struct stat before = status_of("w.qvx");
        const Names names = entries();
        const Outcome outcome = run_qvx_as_nobody(set_home("w.qvx"));
        const struct stat after = status_of("w.qvx");
        chmod(".", 0700);
        EXPECT_EQ(outcome.status, c.way == Way::refused ? 2 : 0) << outcome.err;
        EXPECT_EQ(home_of("w.qvx"), c.way == Way::refused ? "old" : "new");
        EXPECT_EQ(before.st_ino != after.st_ino, c.way == Way::replaced);
        EXPECT_EQ(after.st_mode, before.st_mode);
        EXPECT_EQ(after.st_uid, before.st_uid);
        EXPECT_EQ(after.st_gid, before.st_gid);
        EXPECT_EQ(after.st_nlink, before.st_nlink);
        EXPECT_EQ(entries(), names);
    }
}

TEST_F(QvxSaving, LinksStay) {
    fs::create_directory("far");
    fs::rename("w.qvx", "far/w.qvx");
    fs::create_symlink("far/w.qvx", "one");
    fs::create_symlink("one", "two");
    fs::create_symlink("far/made", "to_nowhere");
    EXPECT_EQ(run_qvx(set_home("two")).status, 0);
    EXPECT_EQ(home_of("far/w.qvx"), "new");
    EXPECT_EQ(run_qvx({"convert", "two", "to_nowhere"}).status, 0);
    EXPECT_EQ(home_of("far/made"), "new");
    for (const char *link : {"one", "two", "to_nowhere"}) {
        EXPECT_TRUE(fs::is_symlink(link));
    }
    EXPECT_EQ(entries(), (Names{"far", "one", "to_nowhere", "two"}));
}

// What runs left that were killed while they wrote in place. Copies with a user's own name stay,
// and so does all that a file may need which such a run has left half written.
TEST_F(QvxSaving, InPlaceTheNextSaveSweepsToo) {
    const pid_t ended = fork();
    if (ended == 0) {
        _exit(0);
    }
    waitpid(ended, nullptr, 0);
    const std::string gone = std::to_string(ended), here = std::to_string(getpid());
    for (const bool half_written : {false, true}) {
        enter_empty_folder();
        write_file("w.qvx", half_written ? "\0<cell>"s : k_old);
        fs::create_hard_link("w.qvx", "other");
        fs::create_directory("tmp");
        write_file("tmp/quorvane-new." + gone + ".aBcDeF", "half");
        write_file("tmp/quorvane-new." + here + ".aBcDeF", "still written");
        write_file("tmp/quorvane.aBcDeF", "kept");
        Names names = {"other", "tmp", "w.qvx", "w.qvx-old", "w.qvx-old." + here};
        write_file("w.qvx-old", k_old);
        write_file("w.qvx-old." + here, k_old);
        write_file("w.qvx-old." + gone, k_old);
        if (half_written) {
            names.insert(names.end(), {"w.qvx-old-" + gone, "w.qvx.bad"});
        }
        setenv("TMPDIR", "tmp", 1);
        EXPECT_EQ(run_qvx({"set", "--force", "w.qvx", "home", "--text", "new"}).status, 0);
        unsetenv("TMPDIR");
        EXPECT_EQ(home_of("other"), "new");
        std::sort(names.begin(), names.end());
        EXPECT_EQ(entries(), names);
        EXPECT_EQ(std::distance(fs::directory_iterator("tmp"), fs::directory_iterator()), 2);
    }
}

// The longest name that a folder takes, there or not, and a path of over a thousand bytes are
// nothing special.
TEST_F(QvxSaving, LongPathsAreWhole) {
    const std::string name(255, 'n');
    std::string folder;
    for (int i = 0; i < 6; ++i) {
        folder += std::string(200, static_cast<char>('a' + i)) + "/";
    }
    fs::create_directories(folder);
    for (const std::string &path : {name, folder + "w.qvx", folder + name}) {
        ASSERT_EQ(run_qvx({"new", path}).status, 0);
        ASSERT_EQ(run_qvx(set_home(path)).status, 0);
        EXPECT_EQ(home_of(path), "new");
        fs::remove(path);
        EXPECT_EQ(run_qvx({"convert", "w.qvx", path}).status, 0);
        EXPECT_EQ(home_of(path), "old");
    }
    EXPECT_EQ(run_qvx({"convert", "w.qvx", ""}).err,
              "qvx: UNABLE TO OPEN WEB FILE: No such file or directory\n");
    EXPECT_EQ(entries().size(), 3U);
    EXPECT_EQ(run_qvx({"new", std::string(5000, 'x')}).status, 2);
}

TEST_F(QvxSaving, AFullDiskLeavesTheOldFile) {
    fs::create_directory("full");
    const bool mounted = mount("none", "full", "tmpfs", 0, "size=64k") == 0;
    const long limit = mounted ? 0 : 20000;  // for each file
    const std::string big(50000, 'b');
    for (const bool linked : {false, true}) {
        SCOPED_TRACE(linked);
        write_file("full/w.qvx", k_old);
        if (linked) {
            fs::create_hard_link("full/w.qvx", "full/other");
        }
        const Names before = {linked ? "full/other" : "", "full/w.qvx"};
        const Outcome outcome = run_qvx(set_home("full/w.qvx", big + big), "", limit);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_NE(outcome.err.find("UNABLE TO WRITE TO WEB FILE"), std::string::npos);
        EXPECT_EQ(file_bytes("full/w.qvx"), k_old);
        EXPECT_EQ(std::distance(fs::directory_iterator("full"), fs::directory_iterator()),
                  linked ? 2 : 1);
        EXPECT_EQ(run_qvx(set_home("full/w.qvx")).status, 0);
        EXPECT_EQ(home_of("full/w.qvx"), "new");
    }
    if (mounted) {
        umount("full");
    }
}

// Killed at any time up to a little longer than a run takes.
TEST_F(QvxSaving, KilledRunsLoseNothing) {
    ASSERT_EQ(run_qvx({"set", "w.qvx", "filler", "--file", "-"}, std::string(200000, 'f')).status,
              0);
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(run_qvx(set_home("w.qvx", "old2")).status, 0);
    const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now() - start);
    const auto longest = static_cast<unsigned>(whole.count() * 3 / 2);
    ASSERT_EQ(run_qvx(set_home("w.qvx", "old")).status, 0);
    std::string last = "old";
    unsigned done = 0;
    for (unsigned round = 0; round < k_killed_runs; ++round) {
        const std::string text = std::to_string(round);
        run_and_kill_qvx(set_home("w.qvx", text), round * 7919 % longest);
        const Outcome shown = run_qvx({"show", "w.qvx", "home"});
        ASSERT_TRUE(shown.status == 0 && (shown.out == last || shown.out == text)) << shown.err;
        done += shown.out == text ? 1U : 0U;
        last = shown.out;
    }
    EXPECT_GT(done, 0U);
    EXPECT_LT(done, k_killed_runs);
    EXPECT_EQ(run_qvx(set_home("w.qvx")).status, 0);
    EXPECT_EQ(run_qvx({"show", "w.qvx", "filler"}).out.size(), 200000U);
    EXPECT_EQ(entries(), Names{"w.qvx"});
}

// The streams of run_qvx() are one process's, so that each writer is one.
TEST_F(QvxSaving, TwoWritersAndAReaderLoseNothing) {
    constexpr int k_each = 100;
    pid_t writers[2];
    for (int w = 0; w < 2; ++w) {
        writers[w] = fork();
        if (writers[w] == 0) {
            for (int i = 0; i < k_each; ++i) {
                const std::string name = "cell_" + std::to_string(w) + "_" + std::to_string(i);
                const std::string command =
                    std::string(QVX_PATH) + " set w.qvx " + name + " --text " + std::to_string(i);
                if (std::system(command.c_str()) != 0) {
                    _exit(1);
                }
            }
            _exit(0);
        }
    }
    size_t seen = 0;
    for (int left = 2; left > 0;) {
        const Outcome list = run_qvx({"list", "w.qvx"});
        const auto cells = static_cast<size_t>(std::count(list.out.begin(), list.out.end(), '\n'));
        ASSERT_EQ(list.status, 0) << list.err;
        ASSERT_GE(cells, seen);
        seen = cells;
        int status = 0;
        while (left > 0 && waitpid(-1, &status, WNOHANG) > 0) {
            EXPECT_EQ(status, 0);
            --left;
        }
    }
    const Outcome list = run_qvx({"list", "w.qvx"});
    EXPECT_EQ(std::count(list.out.begin(), list.out.end(), '\n'), 1 + 2 * k_each);
    for (int w = 0; w < 2; ++w) {
        const std::string name = "cell_" + std::to_string(w) + "_";
        EXPECT_EQ(run_qvx({"show", "w.qvx", name + "0"}).out, "0");
        EXPECT_EQ(run_qvx({"show", "w.qvx", name + "99"}).out, "99");
    }
    EXPECT_EQ(entries(), Names{"w.qvx"});
}

TEST_F(QvxSaving, WaitsForAnotherWriterAndSaysWhoItIs) {
    for (const int seconds : {1, 20}) {
        const pid_t holder = fork();
        if (holder == 0) {
            const int file = open("w.qvx", O_RDONLY);
            flock(file, LOCK_EX);
            close(open("locked", O_CREAT | O_WRONLY, 0600));
            sleep(static_cast<unsigned>(seconds));
            _exit(0);
        }
        while (!fs::exists("locked")) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        fs::remove("locked");
        EXPECT_EQ(home_of("w.qvx"), seconds == 1 ? "old" : "new") << "reading waits for nobody";
        const Outcome outcome = run_qvx(set_home("w.qvx"));
        EXPECT_EQ(outcome.status, seconds == 1 ? 0 : 2);
        if (seconds > 1) {
            EXPECT_EQ(outcome.err,
                      "qvx: w.qvx: in use by qvx_tests (process " + std::to_string(holder) + ")\n");
        }
        kill(holder, SIGKILL);
        waitpid(holder, nullptr, 0);
    }
}

// A process that locks w.qvx in the moment in which it appears, if it can, and holds it for a
// while. It ends with 0 when the lock was on the file that the path names.
pid_t lock_what_appears() {
    const pid_t child = fork();
    if (child != 0) {
        return child;
    }
    int file = -1;
    while (file < 0) {
        file = open("w.qvx", O_RDWR);
    }
    const bool locked = flock(file, LOCK_EX | LOCK_NB) == 0;
    struct stat own = {};
    fstat(file, &own);
    const bool is_named = own.st_ino == status_of("w.qvx").st_ino && own.st_size == 0;
    usleep(locked ? 8000 : 0);
    _exit(locked && is_named ? 0 : 1);
}

// Whoever locks the file first may have written it by the time that another one gets to it.
TEST_F(QvxSaving, NewDoesNotWriteOverWhatSomebodyElseTookUp) {
    for (int round = 0; round < 300; ++round) {
        fs::remove("w.qvx");
        const pid_t other = lock_what_appears();
        const int status = run_qvx({"new", "w.qvx"}).status;
        int other_status = 0;
        waitpid(other, &other_status, 0);
        EXPECT_EQ(status, other_status == 0 ? 1 : 0) << round;
    }
}
