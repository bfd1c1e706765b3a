// How the handheld replaces a file, which has no rename over one: whatever call the system refuses,
// and wherever the program is killed, a reader finds the old bytes or the new ones, whole.
#include "tests/handheld/pretended_files.h"

#include "core/host_files.h"
#include "core/host_messages.h"
#include "file/save.h"
#include "file/web_writer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

#include <windows.h>

namespace fs = std::filesystem;

static std::string to_save;

// What file/save.cpp calls of the rest of the engine.
int web_write(FILE *file) {
    return fwrite(to_save.data(), 1, to_save.size(), file) == to_save.size() ? 0 : -4;
}

int report_error(int code) {
    return code;
}

void show_warning(const char *, const char *) {}

namespace {

const std::string k_old = "the old web, which is longer than the new one </eof>";
const std::string k_new = "the new web </eof>";
const std::string k_newer = "what a later save writes </eof>";
constexpr const char *k_path = "\\Notes\\web.qvx";
constexpr const wchar_t *k_wide_path = L"\\Notes\\web.qvx";

void put(const std::wstring &name, const std::string &bytes) {
    std::ofstream(host_path(name), std::ios::binary) << bytes;
}

std::string bytes_of(FILE *file) {
    if (file == nullptr) {
        return "nothing";
    }
    char bytes[256];
    const size_t n = fread(bytes, 1, sizeof bytes, file);
    fclose(file);
    return {bytes, n};
}

std::string bytes_at(const char *path) {
    return bytes_of(file_open(path, "rb"));
}

// What somebody reads who opens the web, with the card in and the program alive.
std::string read_by_anybody(const char *path) {
    pretend_mishap(Mishap::none, 0, true);
    return bytes_of(open_web_file(path, "r+b"));
}

bool replace(const char *path, const std::string &bytes = k_new) {
    bool keep_old = false;
    Fingerprint written = {};
    to_save = bytes;
    return save_web_file(path, &keep_old, &written) == 0;
}

// Saves in a process of its own, which is killed at a call; false when it lived.
bool killed_while_saving(int calls, const std::string &bytes) {
    const pid_t child = fork();
    if (child == 0) {
        pretend_mishap(Mishap::killed, calls, true);
        replace(k_path, bytes);
        _exit(1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status) == 0;
}

size_t files_in(const std::wstring &folder) {
    return static_cast<size_t>(std::distance(fs::directory_iterator(host_path(folder)), {}));
}

// Runs check(calls) for a mishap behind 0 calls, 1 call and so on, until one did not come to pass.
void at_every_call(const std::function<bool(int)> &check) {
    int calls = 0;
    while (check(calls)) {
        ASSERT_LT(++calls, 100);
    }
    ASSERT_GT(calls, 4);
}

class HandheldSaving : public testing::Test {
protected:
    void SetUp() override { pretend_empty_root(); }
};

TEST_F(HandheldSaving, ReplacesAndMakes) {
    put(k_wide_path, k_old);
    EXPECT_TRUE(replace(k_path));
    EXPECT_TRUE(replace("\\Notes\\other.qvx"));
    EXPECT_EQ(bytes_at(k_path), k_new);
    EXPECT_EQ(bytes_at("\\Notes\\other.qvx"), k_new);
    EXPECT_EQ(files_in(L"\\Notes"), 2U);
}

// The next save leaves nothing behind.
void save_again_and_sweep(int calls) {
    EXPECT_TRUE(replace(k_path)) << calls;
    EXPECT_EQ(bytes_at(k_path), k_new) << calls;
    EXPECT_EQ(files_in(L"\\Notes"), 1U) << calls;
}

TEST_F(HandheldSaving, AnyCallIsRefused) {
    for (const bool temporary : {true, false}) {
        at_every_call([temporary](int calls) {
            pretend_empty_root();
            put(k_wide_path, k_old);
            pretend_mishap(Mishap::refused, calls, temporary);
            const bool done = replace(k_path);
            const bool happened = mishap_happened();
            pretend_mishap(Mishap::none, 0, true);
            EXPECT_EQ(bytes_at(k_path), done ? k_new : k_old) << calls;
            EXPECT_EQ(read_by_anybody(k_path), done ? k_new : k_old) << calls;
            save_again_and_sweep(calls);
            return happened;
        });
    }
}

// Nothing then says what is on the card, but that all of one version is.
TEST_F(HandheldSaving, TheCardIsTakenOutAtAnyCall) {
    at_every_call([](int calls) {
        pretend_empty_root();
        put(k_wide_path, k_old);
        pretend_mishap(Mishap::refused_after, calls, true);
        const bool done = replace(k_path);
        const bool happened = mishap_happened();
        const std::string bytes = read_by_anybody(k_path);
        EXPECT_TRUE(bytes == k_new || (bytes == k_old && !done)) << calls << " " << bytes;
        save_again_and_sweep(calls);
        return happened;
    });
}

TEST_F(HandheldSaving, TheProgramIsKilledAtAnyCall) {
    at_every_call([](int calls) {
        pretend_empty_root();
        put(k_wide_path, k_old);
        const bool killed = killed_while_saving(calls, k_new);
        const std::string bytes = read_by_anybody(k_path);
        EXPECT_TRUE(bytes == k_old || bytes == k_new) << calls << " " << bytes;
        save_again_and_sweep(calls);
        return killed;
    });
}

bool is_version(const std::string &bytes) {
    return bytes == k_old || bytes == k_new || bytes == k_newer;
}

// Nobody opens the web between the two.
TEST_F(HandheldSaving, ASaveBehindAKilledOneLosesNothing) {
    at_every_call([](int calls) {
        bool killed = true;
        for (const Mishap mishap : {Mishap::killed, Mishap::refused, Mishap::refused_after}) {
            at_every_call([&](int later) {
                pretend_empty_root();
                put(k_wide_path, k_old);
                killed = killed_while_saving(calls, k_new);
                bool happened = false;
                if (mishap == Mishap::killed) {
                    happened = killed_while_saving(later, k_newer);
                } else {
                    pretend_mishap(mishap, later, true);
                    replace(k_path, k_newer);
                    happened = mishap_happened();
                }
                const std::string bytes = read_by_anybody(k_path);
                EXPECT_TRUE(is_version(bytes)) << calls << " " << later << " " << bytes;
                save_again_and_sweep(calls);
                return happened;
            });
        }
        return killed;
    });
}

// A version that was cut gives way to the one that was set aside, which is what the user had.
TEST_F(HandheldSaving, WhatAKilledSaveLeftIsFoundAndSavedOver) {
    const struct {
        const char *next;
        const char *aside;
        std::string found;
    } rows[] = {
        {k_new.c_str(), k_old.c_str(), k_new}, {k_new.c_str(), nullptr, k_new},
        {"the new w", k_old.c_str(), k_old},   {"", k_old.c_str(), k_old},
        {nullptr, k_old.c_str(), k_old},       {"the new w", "by hand\n", "by hand\n"},
        {"the new w", nullptr, "nothing"},
    };
    for (const auto &row : rows) {
        const auto leave = [&row] {
            pretend_empty_root();
            if (row.next != nullptr) {
                put(L"\\Notes\\web.qvx-new", row.next);
            }
            if (row.aside != nullptr) {
                put(L"\\Notes\\web.qvx-aside", row.aside);
            }
        };
        leave();
        EXPECT_EQ(read_by_anybody(k_path), row.found);
        save_again_and_sweep(0);
        at_every_call([&](int calls) {
            leave();
            const bool killed = killed_while_saving(calls, k_newer);
            const std::string bytes = read_by_anybody(k_path);
            EXPECT_TRUE(bytes == row.found || is_version(bytes)) << calls << " " << bytes;
            return killed;
        });
    }
}

// As the dialogs list them: no other folder is looked into.
TEST_F(HandheldSaving, EveryCutOffSaveIsFoundWhereTheDialogsLook) {
    const struct {
        std::wstring folder;
        bool found;
    } rows[] = {{L"\\Notes\\", true},
                {L"\\Notes\\Trip\\", true},
                {L"\\Notes\\Trip\\Deep\\", false},
                {L"\\Card\\", true},
                {L"\\Temp\\", false}};
    fs::create_directories(host_path(L"\\Notes\\Trip\\Deep"));
    fs::create_directories(host_path(L"\\Card"));
    set_attributes(L"\\Card", FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_TEMPORARY);
    for (const auto &row : rows) {
        put(row.folder + L"a.qvx-aside", k_old);
        put(row.folder + L"a.qvx-new", k_new);
        put(row.folder + L"b.qvx-aside", k_old);
        put(row.folder + L"c.qvx", k_newer);
        put(row.folder + L"c.qvx-aside", k_old);
        put(row.folder + L"-new", "cut");
    }
    finish_all_cut_off();
    for (const auto &row : rows) {
        const std::string folder(row.folder.begin(), row.folder.end());
        EXPECT_EQ(bytes_at((folder + "a.qvx").c_str()), row.found ? k_new : "nothing") << folder;
        EXPECT_EQ(bytes_at((folder + "b.qvx").c_str()), row.found ? k_old : "nothing") << folder;
        EXPECT_EQ(bytes_at((folder + "c.qvx").c_str()), k_newer) << folder;
    }
}

TEST_F(HandheldSaving, WhatIsNoFileToWrite) {
    put(k_wide_path, k_old);
    set_attributes(k_wide_path, FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(replace(k_path));
    EXPECT_EQ(bytes_at(k_path), k_old);
    EXPECT_FALSE(replace("\\Notes"));
    EXPECT_FALSE(replace("\\No folder\\web.qvx"));
    const std::string long_path = "\\Notes\\" + std::string(5000, 'x');
    EXPECT_FALSE(replace(long_path.c_str()));
    EXPECT_EQ(file_open(long_path.c_str(), "rb"), nullptr);
}

TEST_F(HandheldSaving, AttributesStay) {
    put(k_wide_path, k_old);
    set_attributes(k_wide_path, FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE);
    EXPECT_TRUE(replace(k_path));
    EXPECT_EQ(GetFileAttributesW(k_wide_path), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE);
}

// There is no current directory.
TEST_F(HandheldSaving, PathsThatDoNotBeginAtTheRootAreInTheDocuments) {
    for (const char *path : {".\\Output.txt", "Output.txt", "\\Notes\\Output.txt"}) {
        FILE *file = file_open(path, "wb");
        ASSERT_NE(file, nullptr);
        fputs(path, file);
        fclose(file);
        EXPECT_EQ(bytes_at("\\Notes\\Output.txt"), path);
    }
    EXPECT_EQ(files_in(L"\\Notes"), 1U);
    FILE *file = file_open("\\Output.txt", "wb");
    ASSERT_NE(file, nullptr);
    fclose(file);
    EXPECT_TRUE(fs::exists(host_path(L"\\Output.txt")));
}

}  // namespace
