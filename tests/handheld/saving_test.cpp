// How the handheld replaces a file, which has no rename over one: whatever call the system refuses,
// and wherever the program is killed, a reader finds the old bytes or the new ones, whole.
#include "tests/handheld/pretended_files.h"

#include "core/host_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

#include <windows.h>

namespace fs = std::filesystem;

namespace {

const std::string k_old = "the old web, which is longer than the new one </eof>";
const std::string k_new = "the new web </eof>";
constexpr const char *k_path = "\\Notes\\web.qvx";
constexpr const wchar_t *k_wide_path = L"\\Notes\\web.qvx";

void put(const std::wstring &name, const std::string &bytes) {
    std::ofstream(host_path(name), std::ios::binary) << bytes;
}

std::string bytes_at(const char *path) {
    FILE *file = file_open(path, "rb");
    if (file == nullptr) {
        return "nothing";
    }
    char bytes[256];
    const size_t n = fread(bytes, 1, sizeof bytes, file);
    fclose(file);
    return {bytes, n};
}

// What somebody reads who opens the file: see open_web_file() of file/save.h.
std::string read_by_anybody(const char *path) {
    pretend_mishap(Mishap::none, 0, true);
    const std::string bytes = bytes_at(path);
    const char *successor = file_successor(path);
    if (bytes != "nothing" || *successor == 0 || !file_move(successor, path)) {
        return bytes;
    }
    return bytes_at(path);
}

bool replace(const char *path) {
    FILE *file = file_replace_begin(path);
    if (file == nullptr) {
        return false;
    }
    if (fwrite(k_new.data(), 1, k_new.size(), file) != k_new.size()) {
        file_replace_abandon();
        return false;
    }
    return file_replace_finish();
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
        const pid_t child = fork();
        if (child == 0) {
            pretend_mishap(Mishap::killed, calls, true);
            replace(k_path);
            _exit(1);  // it lived
        }
        int status = 0;
        waitpid(child, &status, 0);
        const std::string bytes = read_by_anybody(k_path);
        EXPECT_TRUE(bytes == k_old || bytes == k_new) << calls << " " << bytes;
        save_again_and_sweep(calls);
        return WEXITSTATUS(status) == 0;
    });
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
