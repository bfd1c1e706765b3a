// Saving over a file: at every moment one whole version of it exists, and it is found again.
#include "tests/engine/engine_test.h"
#include "tests/engine/web_files.h"

#include "core/byte_stream.h"
#include "file/document.h"
#include "file/safe_save.h"
#include "web/cell_text.h"
#include "web/cells.h"

#include <algorithm>
#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using SafeSave = EngineTest;

namespace {

constexpr const char *k_whole = "<cell><cname>home</cname><text>before</text></cell></eof>";
constexpr const char *k_cut = "<cell><cname>home</cname><text>bef";

struct Place {
    std::string path;
    std::string copy;
};

// A path with nothing there, and none of its copies.
Place fresh_place() {
    std::string path = scratch_path("web.qvx");
    unlink(path.c_str());
    unlink((path + "~").c_str());
    return {path, path + "~"};
}

bool is_there(const std::string &path) {
    return access(path.c_str(), F_OK) == 0;
}

int save_with_failing_writes() {
    byte_stream_fail_write_after(0);
    int code = doc_save();
    byte_stream_fail_write_after(-1);
    return code;
}

}  // namespace

TEST_F(SafeSave, TheCopyGoesOnlyWhenTheNewFileIsWhole) {
    Place place = fresh_place();
    make_file(place.path, k_whole);
    chmod(place.path.c_str(), 0640);
    ASSERT_EQ(doc_open(place.path.c_str()), 0);

    EXPECT_EQ(save_with_failing_writes(), -4);
    EXPECT_EQ(file_bytes(place.copy), k_whole);
    EXPECT_FALSE(web_file_is_whole(place.path.c_str()));

    // Failing again does not replace the copy by what is cut short.
    EXPECT_EQ(save_with_failing_writes(), -4);
    EXPECT_EQ(file_bytes(place.copy), k_whole);

    EXPECT_EQ(doc_save(), 0);
    EXPECT_TRUE(web_file_is_whole(place.path.c_str()));
    EXPECT_FALSE(is_there(place.copy));
    EXPECT_EQ(doc_save(), 0);
    EXPECT_FALSE(is_there(place.copy));
}

TEST_F(SafeSave, WhatIsNoFileIsLeftAlone) {
    Place place = fresh_place();
    mkdir(place.copy.c_str(), 0700);
    make_file(place.path, k_whole);
    ASSERT_EQ(doc_open(place.path.c_str()), 0);
    EXPECT_EQ(doc_save(), 0);
    EXPECT_TRUE(is_there(place.copy));
    rmdir(place.copy.c_str());

    // A folder stands where the file should be: it is neither renamed nor removed.
    unlink(place.path.c_str());
    mkdir(place.path.c_str(), 0700);
    EXPECT_EQ(doc_save(), -3);
    EXPECT_EQ(file_kind(place.path.c_str()), FileKind::other);
    EXPECT_FALSE(is_there(place.copy));
    rmdir(place.path.c_str());
}

TEST_F(SafeSave, AFileThatCouldNotBeReadWholeKeepsItsCopyOnce) {
    const std::string bad = "<cell><cname>1</cname></cell></eof>";
    for (bool read_error : {false, true}) {
        Place place = fresh_place();
        make_file(place.path, read_error ? k_whole : bad);
        byte_stream_fail_read_after(read_error ? 0 : -1);
        ASSERT_EQ(doc_open(place.path.c_str()), 0);
        byte_stream_fail_read_after(-1);
        EXPECT_EQ(doc_save(), 0);
        EXPECT_EQ(file_bytes(place.copy), read_error ? k_whole : bad);
        EXPECT_EQ(doc_save(), 0);
        EXPECT_FALSE(is_there(place.copy));
    }
}

TEST_F(SafeSave, OpeningAsksForTheCopyOfASaveThatWasCutShort) {
    struct {
        const char *file;  // null: missing
        const char *copy;
        bool asks;
    } rows[] = {
        {k_cut, k_whole, true}, {nullptr, k_whole, true}, {k_whole, k_whole, false},
        {k_cut, k_cut, false},  {k_cut, nullptr, false},
    };
    for (const auto &row : rows) {
        for (bool yes : {true, false}) {
            Place place = fresh_place();
            if (row.file != nullptr) {
                make_file(place.path, row.file);
            }
            if (row.copy != nullptr) {
                make_file(place.copy, row.copy);
            }
            host().yes_no = {yes};
            take_log();
            int code = doc_open(place.path.c_str());
            Log log = take_log();
            std::string name = doc_display_name(place.path.c_str());
            std::string question = "ask_yes_no The last save of " + name +
                                   " was cut short. Open the copy from before?|Quorvane";
            EXPECT_EQ(std::count(log.begin(), log.end(), question), row.asks ? 1 : 0);
            bool from_copy = row.asks && yes;
            EXPECT_EQ(code, row.file == nullptr && !from_copy ? -3 : 0);
            if (from_copy) {
                EXPECT_EQ(text_of("home"), "before");
                EXPECT_EQ(doc_save_path(), place.path);
                EXPECT_TRUE(is_there(place.copy));
                EXPECT_EQ(doc_save(), 0);
                EXPECT_TRUE(web_file_is_whole(place.path.c_str()));
                EXPECT_FALSE(is_there(place.copy));
            }
        }
    }
}

// The program is killed while it saves, again and again. Whatever it leaves opens as the web before
// or after.
TEST_F(SafeSave, AKilledSaveLosesNothing) {
    Place place = fresh_place();
    for (int i = 0; i < 300; ++i) {
        make_cell(("cell" + std::to_string(i)).c_str(), std::string(300, 'x'));
    }
    make_cell("stamp", "0");
    std::string before = "0";
    host().save_paths = {place.path};
    ASSERT_EQ(doc_save(), 0);
    uint32_t cut = 0;
    for (uint32_t round = 1; round <= 200; ++round) {
        std::string after = std::to_string(round);
        cell_replace_text(cell_lookup("stamp"), after.data(), static_cast<uint32_t>(after.size()));
        pid_t child = fork();
        if (child == 0) {
            doc_save();
            _exit(0);
        }
        usleep((round * 37) % 900);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        cut += web_file_is_whole(place.path.c_str()) ? 0U : 1U;
        host().yes_no = {true};
        ASSERT_EQ(doc_open(place.path.c_str()), 0) << round;
        ASSERT_TRUE(text_of("stamp") == before || text_of("stamp") == after) << round;
        ASSERT_EQ(text_of("cell299"), std::string(300, 'x'));
        before = text_of("stamp");
    }
    EXPECT_GT(cut, 0U);  // or nothing was tried
}
