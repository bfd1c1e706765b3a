// Saving over files of every kind, and several programs on one file: nothing is lost, whoever is
// killed, refused or late.
#include "tests/cli/run_qvx.h"

#include <algorithm>
#include <functional>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace std::string_literals;

namespace {

using Names = std::vector<std::string>;

const std::string k_old = web_of("old");
constexpr unsigned k_nobody = 65534;

struct QvxSaving : QvxTest {
    QvxSaving() : QvxTest(k_old) {}
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
    bool needs_root = false;  // to prepare
};

const Case k_cases[] = {
    {"private", [] { chmod("w.qvx", 0600); }, Way::replaced},
    {"for a group", [] { chmod("w.qvx", 0660); }, Way::replaced},
    {"read-only", [] { chmod("w.qvx", 0444); }, Way::refused},
    {"other names", [] { link("w.qvx", "other.qvx"); }, Way::in_place},
    {"the user's own attributes", [] { setxattr("w.qvx", "user.note", "n", 1, 0); }, Way::in_place},
    {"somebody else's, writable",
     [] {
         chmod("w.qvx", 0666);
         EXPECT_EQ(chown("w.qvx", 1234, 1234), 0);
     },
     Way::in_place, true},
    {"somebody else's, not writable", [] { EXPECT_EQ(chown("w.qvx", 1234, 1234), 0); },
     Way::refused, true},
    {"another group's", [] { EXPECT_EQ(chown("w.qvx", k_nobody, 1234), 0); }, Way::in_place, true},
    {"in a folder without write permission", [] { chmod(".", 0555); }, Way::in_place},
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
        const Outcome outcome = run_qvx(set_home("w.qvx"), "", {.as_nobody = true});
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
    EXPECT_EQ(entries().size(), 3U);
    EXPECT_EQ(run_qvx({"new", std::string(5000, 'x')}).status, 2);
}

TEST_F(QvxSaving, AFullDiskLeavesTheOldFile) {
    const std::string big(50000, 'b');
    const Circumstances full = {.file_limit = 20000};
    for (const bool linked : {false, true}) {
        SCOPED_TRACE(linked);
        write_file("w.qvx", k_old);
        if (linked) {
            fs::create_hard_link("w.qvx", "other");
        }
        const Names before = entries();
        const Outcome outcome = run_qvx(set_home("w.qvx", big), "", full);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_NE(outcome.err.find("UNABLE TO WRITE TO WEB FILE"), std::string::npos);
        EXPECT_EQ(file_bytes("w.qvx"), k_old);
        EXPECT_EQ(entries(), before);
        EXPECT_EQ(run_qvx(set_home("w.qvx", big)).status, 0);
    }
    EXPECT_EQ(run_qvx({"convert", "w.qvx", "fresh.qvx"}, "", full).err,
              "qvx: fresh.qvx: UNABLE TO WRITE TO WEB FILE: File too large\n");
    EXPECT_EQ(run_qvx({"new", "fresh.qvx"}, "", {.file_limit = 100}).status, 2);
    EXPECT_EQ(entries(), (Names{"other", "w.qvx"}));
}

// The streams of run_qvx() are one process's, so that each writer is one.
TEST_F(QvxSaving, TwoWritersAndAReaderLoseNothing) {
    for (const char *w : {"0", "1"}) {
        if (fork() == 0) {
            const std::string loop = "for i in $(seq 0 99); do "s + QVX_PATH + " set w.qvx cell_" +
                                     w + "_$i --text $i || exit 1; done";
            execl("/bin/sh", "sh", "-c", loop.c_str(), nullptr);
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
    EXPECT_EQ(std::count(list.out.begin(), list.out.end(), '\n'), 201);
    EXPECT_EQ(run_qvx({"show", "w.qvx", "cell_0_99"}).out, "99");
    EXPECT_EQ(entries(), Names{"w.qvx"});
}

TEST_F(QvxSaving, WaitsForAnotherWriterAndSaysWhoItIs) {
    const int file = open("w.qvx", O_RDONLY | O_CLOEXEC);
    flock(file, LOCK_EX);
    EXPECT_EQ(home_of("w.qvx"), "old") << "reading waits for nobody";
    const Outcome late = run_qvx(set_home("w.qvx"));
    EXPECT_EQ(late.status, 2);
    EXPECT_EQ(late.err,
              "qvx: w.qvx: in use by qvx_tests (process " + std::to_string(getpid()) + ")\n");
    std::thread release([file] {
        sleep(1);
        close(file);
    });
    EXPECT_EQ(run_qvx(set_home("w.qvx")).status, 0);
    release.join();
}

// Whoever locks the file in the moment in which it appears may have written it by the time that
// another one gets to it.
TEST_F(QvxSaving, NewDoesNotWriteOverWhatSomebodyElseTookUp) {
    for (int round = 0; round < 100; ++round) {
        fs::remove("w.qvx");
        bool taken = false;
        std::thread other([&taken] {
            int file = -1;
            while (file < 0) {
                file = open("w.qvx", O_RDWR | O_CLOEXEC);
            }
            struct stat own = {};
            taken = flock(file, LOCK_EX | LOCK_NB) == 0 && fstat(file, &own) == 0 &&
                    own.st_ino == status_of("w.qvx").st_ino && own.st_size == 0;
            usleep(taken ? 8000 : 0);
            close(file);
        });
        const int status = run_qvx({"new", "w.qvx"}).status;
        other.join();
        EXPECT_EQ(status, taken ? 1 : 0) << round;
    }
}
