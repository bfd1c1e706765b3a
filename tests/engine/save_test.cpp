// Saving: the path names a whole web at every moment, what could not be read whole is kept, and
// another program's changes are not written over unasked.
#include "tests/engine/engine_test.h"

#include "file/save.h"
#include "platform/system.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::string_literals;
using Save = EngineTest;

// The linker puts these before the platform's functions of the same names. Each is a step that the
// system may refuse: the step that finds the countdown at 0 fails; negative: none.
namespace {

int steps_until_refusal = -1;
bool refused_once = false;
bool dies = false;  // instead

bool refused() {
    if (steps_until_refusal != 0) {
        steps_until_refusal -= steps_until_refusal > 0 ? 1 : 0;
        return false;
    }
    if (dies) {
        raise(SIGKILL);
    }
    steps_until_refusal = -1;
    refused_once = true;
    errno = EIO;
    return true;
}

}  // namespace

#define REFUSABLE(result, step, refusal, parameters, arguments)                                    \
    extern "C" result __real_system_##step parameters;                                             \
    extern "C" result __wrap_system_##step parameters {                                            \
        return refused() ? refusal : __real_system_##step arguments;                               \
    }
REFUSABLE(FILE *, create, nullptr, (const char *path, const char *model, bool exactly),
          (path, model, exactly))
REFUSABLE(FILE *, create_temporary, nullptr, (char *path, bool stays), (path, stays))
REFUSABLE(bool, to_disk, false, (FILE * file), (file))
REFUSABLE(bool, make_room, false, (FILE * file, long length), (file, length))
REFUSABLE(bool, cut, false, (FILE * file, long length), (file, length))
REFUSABLE(bool, put_over, false, (const char *next, const char *target), (next, target))

// What a save in two steps has beside the file, on systems that need them.
static std::string successor;
extern "C" const char *__wrap__Z14file_successorPKc(const char *) {
    return successor.c_str();
}

namespace {

constexpr const char *k_question =
    "ask_no_yes The file was changed by another program. Save over it?|Quorvane";

// Everything in the scratch folder whose name begins like this path's, the path itself apart.
std::vector<std::string> beside(const std::string &path) {
    std::vector<std::string> found;
    for (const fs::directory_entry &entry : fs::directory_iterator(fs::path(path).parent_path())) {
        const std::string name = entry.path().string();
        if (name.starts_with(path) && name != path) {
            found.push_back(name.substr(path.size()));
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

// A path of this test's own with nothing there, nor beside it.
std::string fresh_path(const std::string &name) {
    const std::string path = scratch_path(name);
    fs::create_directories(fs::path(path).parent_path());
    fs::remove(path);
    for (const std::string &suffix : beside(path)) {
        fs::remove(path + suffix);
    }
    return path;
}

std::string open_fresh(const std::string &name, const std::string &bytes) {
    const std::string path = fresh_path(name);
    write_file(path, bytes);
    EXPECT_EQ(doc_command_open_path(path.c_str()), 0);
    return path;
}

// A web with something typed into it, whose file may have another name.
std::string open_to_save(const std::string &bytes, bool linked, const std::string &folder = "") {
    const std::string path = open_fresh(folder + "steps.qvx", bytes);
    const std::string other = fresh_path("another_name");
    if (linked) {
        fs::create_hard_link(path, other);
    }
    type_text("after");
    take_log();
    return path;
}

std::string damage_warning() {
    return std::string("warning ") + doc_current_display_name() +
           " could not be read whole. Saving will keep the old file beside it.|Quorvane";
}

}  // namespace

// One step after the other is refused: the file is the old or the new one, and where a save into
// the file itself failed half way, the message names where the old bytes are, by the last 481
// characters of a longer path.
TEST_F(Save, EveryStepThatTheSystemRefuses) {
    const std::string deep = times(2, std::string(240, 'd') + "/");
    for (const auto &[linked, folder] :
         {std::pair(false, deep), std::pair(true, ""s), std::pair(true, deep)}) {
        int failed = 0;
        bool done = false;
        for (int step = 0; !done; ++step) {
            SCOPED_TRACE((linked ? "linked " : "plain ") + std::to_string(step));
            const std::string path = open_to_save(web_of("before"), linked, folder);
            refused_once = false;
            steps_until_refusal = step;
            const int code = doc_command_save();
            steps_until_refusal = -1;
            done = !refused_once;
            EXPECT_EQ(file_bytes(path), code == 0 ? written_web() : web_of("before"));
            EXPECT_TRUE(code == 0 || code == -3 || code == -4);
            EXPECT_TRUE(code == 0 || !done);
            EXPECT_EQ(fs::hard_link_count(path), linked ? 2U : 1U);
            const Names strays = beside(path);
            if (!strays.empty()) {
                const std::string copy = "-old." + std::to_string(getpid());
                EXPECT_EQ(strays, Names{copy});
                EXPECT_EQ(file_bytes(path + copy), web_of("before"));
                const size_t cut = folder.empty() ? 0 : path.size() + copy.size() - 481;
                const std::string line = "warning The file as it was is kept in ";
                EXPECT_EQ(count(take_log(), line + (path + copy).substr(cut) + "|Quorvane"), 1U);
            } else {
                EXPECT_EQ(testing::PrintToString(take_log()).find("kept in"), std::string::npos);
            }
            failed += code != 0 ? 1 : 0;
        }
        EXPECT_GE(failed, linked ? 4 : 1);
    }
}

// A program that dies while it saves leaves the old web, the new one, or, where it writes over a
// file, one that nobody takes for a web, with the old bytes beside it until somebody has seen to
// them.
TEST_F(Save, DyingAtAnyStepLosesNothing) {
    const std::string old = web_of(std::string(20000, 'b'));
    for (const bool linked : {false, true}) {
        int damaged = 0;
        bool died = true;
        for (int step = 0; died; ++step) {
            SCOPED_TRACE((linked ? "linked " : "plain ") + std::to_string(step));
            const std::string path = open_to_save(old, linked);
            const pid_t child = fork();
            if (child == 0) {
                dies = true;
                steps_until_refusal = step;
                doc_command_save();
                _exit(0);
            }
            int status = 0;
            waitpid(child, &status, 0);
            died = WIFSIGNALED(status);
            take_log();
            ASSERT_EQ(doc_command_open_path(path.c_str()), 0);
            const bool warned = count(take_log(), damage_warning()) == 1;
            const std::string id = std::to_string(child);
            if (warned) {
                EXPECT_EQ(file_bytes(path + "-old." + id), old);
            } else {
                EXPECT_TRUE(file_bytes(path) == old || file_bytes(path) == written_web());
            }
            for (int i = 0; i < 2; ++i) {
                type_text(std::to_string(i));
                EXPECT_EQ(doc_command_save(), 0);
                EXPECT_EQ(beside(path), warned ? (Names{"-old-" + id, ".bad"}) : Names());
            }
            damaged += warned ? 1 : 0;
        }
        EXPECT_EQ(damaged > 0, linked);
    }
}

TEST_F(Save, WhatCouldNotBeReadWholeIsKeptOnce) {
    const struct {
        std::string bytes;
        bool read_error;
        const char *status;
    } rows[] = {
        {"<cname>1</cname></eof>", false, "Bad Input File"},
        {web_of("before"), true, "UNABLE TO READ FROM WEB FILE"},
        {cell_of("home", "no end"), false, "The end of this file is missing"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.status);
        const std::string path = fresh_path("damaged.qvx");
        write_file(path, row.bytes);
        write_file(path + ".bad", "of an earlier day");
        byte_stream_fail_read_after(row.read_error ? 0 : -1);
        take_log();
        ASSERT_EQ(doc_command_open_path(path.c_str()), 0);
        byte_stream_fail_read_after(-1);
        EXPECT_EQ(host().status, row.status);
        EXPECT_EQ(count(take_log(), damage_warning()), 1U);
        byte_stream_fail_write_after(0);
        EXPECT_EQ(doc_command_save(), -4);
        byte_stream_fail_write_after(-1);
        EXPECT_EQ(beside(path), Names{".bad"}) << "nothing was saved over";
        steps_until_refusal = 4;  // the new web's, when the old one has been kept
        EXPECT_EQ(doc_command_save(), -4);
        EXPECT_EQ(file_bytes(path), row.bytes);
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(doc_command_save(), 0);
            EXPECT_EQ(file_bytes(path), written_web());
            EXPECT_EQ(beside(path), (Names{".bad", ".bad2"}));
        }
        EXPECT_EQ(file_bytes(path + ".bad"), "of an earlier day");
        EXPECT_EQ(file_bytes(path + ".bad2"), row.bytes);
    }
}

// A damaged file is left alone by a save elsewhere, and known by every name that it is saved under:
// a command line names a file in its own folder, a dialog by the whole path.
TEST_F(Save, ADamagedFileIsKeptWhateverItIsCalled) {
    const std::string damaged = cell_of("home", "cut");
    for (const bool elsewhere_first : {false, true}) {
        const std::string path = open_fresh("damaged.qvx", damaged);
        const fs::path whole = path;
        if (elsewhere_first) {
            const std::string other = fresh_path("other_place.qvx");
            host().save_paths = {other};
            EXPECT_EQ(doc_command_save_as(), 0);
            EXPECT_EQ(file_bytes(path), damaged);
            EXPECT_EQ(beside(path), Names());
            EXPECT_EQ(beside(other), Names());
        }
        host().save_paths = {(whole.parent_path() / "." / whole.filename()).string()};
        EXPECT_EQ(doc_command_save_as(), 0);
        EXPECT_EQ(file_bytes(path), written_web());
        EXPECT_EQ(beside(path), Names{".bad"});
        EXPECT_EQ(file_bytes(path + ".bad"), damaged);
    }
}

TEST_F(Save, AnotherProgramsChangesAreWrittenOverOnlyWhenTheUserAgrees) {
    const std::string path = open_fresh("shared.qvx", web_of("before"));
    const std::string theirs = web_of("theirs");
    take_log();
    type_text("mine");
    write_file(path, theirs);

    // No: nothing is written, and what is unsaved still counts as such, whoever wanted to save.
    const std::function<int()> ways[] = {doc_command_save, doc_command_new, doc_command_save_as,
                                         [&] { return doc_command_open_path(path.c_str()); }};
    for (const auto &way : ways) {
        host().yes_no = {false};
        host().save_changes = {true};
        host().save_paths = {path};
        EXPECT_EQ(way(), 2);
        EXPECT_TRUE(web_changed());
        EXPECT_EQ(file_bytes(path), theirs);
        EXPECT_EQ(stored_text("home"), "mine");
        EXPECT_EQ(doc_save_path(), path);
    }
    host().save_changes = {true};
    EXPECT_EQ(run_until_end(save_and_exit), std::nullopt);
    const Log log = take_log();
    EXPECT_EQ(count(log, k_question), 5U);
    EXPECT_EQ(count(log, "ask_save_path " + path + "|shared"), 1U);

    host().yes_no = {true};
    EXPECT_EQ(doc_command_save(), 0);
    EXPECT_EQ(count(take_log(), k_question), 1U);
    EXPECT_EQ(file_bytes(path), written_web());

    // What the program wrote itself, or what has gone, is no reason to ask; nor is another name.
    type_text("again");
    EXPECT_EQ(doc_command_save(), 0);
    fs::remove(path);
    EXPECT_EQ(doc_command_save(), 0);
    EXPECT_EQ(file_bytes(path), written_web());
    write_file(path, theirs);
    host().save_paths = {fresh_path("mine.qvx")};
    write_file(host().save_paths[0], theirs);
    EXPECT_EQ(doc_command_save_as(), 0);
    EXPECT_EQ(count(take_log(), k_question), 0U);
    EXPECT_EQ(file_bytes(path), theirs);
}

TEST_F(Save, VersionsOfOneChecksumDifferByTheirLength) {
    const std::string path = fresh_path("zero.qvx"), bytes = "\xcc\x24\x31\xc4";  // of checksum 0
    write_file(path, bytes);
    FILE *file = fopen(path.c_str(), "rb");
    const Fingerprint before = fingerprint_of(file);
    fclose(file);
    EXPECT_FALSE(web_file_changed(path.c_str(), before));
    write_file(path, bytes + "\0"s);  // which leaves it so
    EXPECT_TRUE(web_file_changed(path.c_str(), before));
}

TEST_F(Save, AWholeSuccessorTakesThePlaceOfAFileThatIsNotThere) {
    const std::string path = fresh_path("cut.qvx");
    successor = path + "-new";
    for (const char *bytes :
         {"</eof>", "<cname>a</cname></eof>", "</eof", "/eof>", "</eof>\n", ""}) {
        const bool whole = std::string(bytes).ends_with("</eof>");
        write_file(successor, bytes);
        EXPECT_EQ(doc_command_open_path(path.c_str()), whole ? 0 : k_cannot_open_web) << bytes;
        EXPECT_EQ(beside(path), whole ? Names() : Names{"-new"});
        fs::remove(path);
    }
    fs::remove(successor);
    EXPECT_EQ(doc_command_open_path(path.c_str()), k_cannot_open_web);
    successor.clear();
}
