// The output stream: file names, failing, and what one report leaves for the next.
#include "tests/engine/engine_test.h"

#include <csignal>

#include <sys/resource.h>
#include <unistd.h>

using Stream = EngineTest;

namespace {

// Writes one report of these characters and returns its code.
ErrorCode write_report(const std::string &characters) {
    output_clear_stop();
    ErrorCode code = output_string(characters.c_str());
    ErrorCode closing = output_close();
    output_clear_stop();
    return code != 0 ? code : closing;
}

// The same to a file, whose bytes it returns.
std::string file_report(const std::string &characters, ErrorCode *code = nullptr) {
    std::string path = scratch_path("report.txt");
    set_option_odest(k_output_file);
    output_set_path(path.c_str());
    ErrorCode result = write_report(characters);
    output_set_path(nullptr);
    set_option_odest(k_output_console);
    if (code != nullptr) {
        *code = result;
    }
    return file_bytes(path);
}

Log log_of(const std::function<void()> &body) {
    take_log();
    body();
    return take_log();
}

}  // namespace

TEST_F(Stream, AReportBeginsAnew) {
    set_option_onewl(k_newline_cr);
    take_log();
    EXPECT_EQ(file_report("a\x01\r\n'\r"), "a\x01\r'\r");
    EXPECT_EQ(take_log(), (Log{"resting Working...", "resting Writing output file...",
                               "output_began file", "output_ended", "resting Ready"}));
    EXPECT_EQ(file_report("\n\\n\\"), "\r\r") << "behind no CR, quote or backslash";
    EXPECT_EQ(file_report("n"), "n");
    EXPECT_EQ(output_char(0), 0) << "which is no character";
    EXPECT_FALSE(is_busy());
    output_string("x");
    output_abort();
    EXPECT_TRUE(output_aborted() && !output_pump());
    EXPECT_EQ(host().pumps, 10U) << "a character each, and none since";
    take_log();
    EXPECT_EQ(output_string("y"), k_aborted);
    EXPECT_EQ(count(take_log(), "status OPERATION ABORTED"), 1U);
}

TEST_F(Stream, FileNames) {
    const std::string folder = scratch_path("names");
    const std::string before = fs::current_path();
    fs::create_directories(folder + "/my.dir");
    fs::current_path(folder);
    write_report(std::string(48, '.'));  // which are in no name
    const std::string longest(48, 'n');
    const struct {
        std::string oname, path, becomes;
    } rows[] = {
        {"", "Output.txt", ".\\Output"},
        {"n", "n.txt", "n"},
        {"my.dir\\.n", "my.dir/.n", "my.dir\\.n"},
        {"c:notes", "c:notes.txt", "c:notes"},
        {"my.dir\\notes", "my.dir/notes.txt", "my.dir\\notes"},
        {"my.dir\\..\\n.x", "n.x", "my.dir\\..\\n.x"},
        {longest, longest + ".txt", longest},
    };
    set_option_odest(k_output_file);
    for (const auto &row : rows) {
        set_option_oname(row.oname.c_str());
        EXPECT_EQ(write_report("to " + row.path), 0);
        EXPECT_EQ(option_oname(), row.becomes);
        EXPECT_EQ(file_bytes(row.path), "to " + row.path) << row.oname;
        fs::remove(row.path);
    }
    EXPECT_EQ(std::distance(fs::recursive_directory_iterator("."), {}), 1);
    output_set_path("my.dir\\exact");
    output_reset();
    EXPECT_EQ(write_report("x"), 0);
    EXPECT_EQ(file_bytes("my.dir\\exact"), "x") << "taken as it stands";
    output_set_path(nullptr);
    fs::current_path(before);
    fs::remove_all(folder);
}

TEST_F(Stream, AFileThatCannotBeMadePutsReadyBack) {
    set_option_odest(k_output_file);
    set_option_oname("/no such folder/x");
    EXPECT_EQ(log_of([] { EXPECT_EQ(output_string("text"), k_cannot_open_output); }),
              (Log{"resting Working...", "resting Ready", "status UNABLE TO OPEN OUTPUT FILE"}));
    EXPECT_TRUE(output_aborted() && !output_pump());
    EXPECT_FALSE(is_busy() || host().pumps != 0);
    EXPECT_EQ(log_of([] {
                  EXPECT_LT(output_string("text"), 0);
                  EXPECT_EQ(output_close(), 0);
              }),
              Log())
        << "nothing opens it again in this report";
    set_option_odest(k_output_console);
    EXPECT_EQ(write_report("next"), 0);
    EXPECT_EQ(host().console, "next");
}

// A write fails, or the disk is full in the middle of it.
TEST_F(Stream, AWriteThatFailsIsShownOnceAndEndsTheReport) {
    const std::string text(3 * k_byte_buffer_size - 5, 't');
    const std::string failure = "status UNABLE TO WRITE TO WEB FILE";
    signal(SIGXFSZ, SIG_IGN);
    rlimit no_limit;
    getrlimit(RLIMIT_FSIZE, &no_limit);
    for (uint32_t i = 0; i <= 6; ++i) {
        const size_t room = i / 2 * k_byte_buffer_size + i % 2 * 7;
        const rlimit limit = {room, no_limit.rlim_max};
        ErrorCode code = 1;
        std::string written;
        Log log = log_of([&] {
            byte_stream_fail_write_after(i % 2 == 0 ? static_cast<int32_t>(i / 2) : -1);
            setrlimit(RLIMIT_FSIZE, i % 2 == 0 ? &no_limit : &limit);
            written = file_report(text, &code);
            setrlimit(RLIMIT_FSIZE, &no_limit);
            byte_stream_fail_write_after(-1);
        });
        EXPECT_EQ(written, text.substr(0, room));
        EXPECT_EQ(code, i < 6 ? k_cannot_write_web : 0) << i;
        EXPECT_EQ(count(log, failure), i < 6 ? 1U : 0U);
        EXPECT_EQ(log.back(), "resting Ready");
        EXPECT_FALSE(is_busy());
    }
}
