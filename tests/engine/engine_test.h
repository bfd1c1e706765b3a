// What the engine's tests share: a program that has just started, short ways to make and read
// cells, and the headers that most of them need.
#pragma once

#include "tests/engine/checker.h"
#include "tests/engine/recorder.h"
#include "tests/support/files.h"
#include "tests/support/scratch.h"
#include "tests/support/web.h"

#include "core/busy.h"
#include "core/byte_stream.h"
#include "core/errors.h"
#include "core/names.h"
#include "core/recovery.h"
#include "file/document.h"
#include "file/web_reader.h"
#include "program/file_commands.h"
#include "report/output.h"
#include "report/reports.h"
#include "web/cell_ops.h"
#include "web/cell_text.h"
#include "web/changed.h"
#include "web/index.h"
#include "web/options.h"
#include "web/value.h"

#include <gtest/gtest.h>

// Starts the program before a test and checks everything behind it. A test that loses blocks on
// purpose says how many.
class EngineTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    std::ptrdiff_t files_before = 0;
    uint32_t lost_blocks = 0;
};

using Names = std::vector<std::string>;
using Log = std::vector<std::string>;

// Makes a cell as a file does, without showing it; the cell list gets its item.
CellHandle make_cell(const char *name, const std::string &text = "");

// The log since the last call; how many lines of one begin like this.
Log take_log();
uint32_t count(const Log &log, const std::string &start);

// Names of the live cells in index order; of the trail and the forward ring, oldest first.
Names cell_names();
Names trail_names();
Names forward_names();

// Reads a web from these bytes the way the document does, views included; web_read()'s result.
int read_web(const std::string &bytes);

// Without the views.
int parse_web(const std::string &bytes);

// What web_write() makes of the web in a file that has room for so many bytes; its result goes to
// *code where one is given.
std::string written_web(int *code = nullptr, size_t room = SIZE_MAX);

// Reads a web, views included, from a file whose reading fails behind its last byte.
int read_web_then_fail(const std::string &bytes);

// A path that no other test uses at the same time; the file goes when the process ends.
inline std::string scratch_path(const std::string &name) {
    return (scratch_folder() / name).string();
}

// A web to work in: cells alpha, bent, beta, gamma and home, delta deleted; the user is at beta,
// having come from home by way of alpha, with gamma ahead; unchanged. Beta has a text, a script and
// a value; bent was never visited. The log is empty.
void open_scene();

// All that a user can see of the web and of the way through it, a line an item.
Names visible_state();

// What leave_free_blocks() took.
void give_back(const std::vector<BlockHandle> &blocks);
