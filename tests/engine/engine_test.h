// What the engine's tests share: a program that has just started, short ways to make and read
// cells, and the headers that most of them need.
#pragma once

#include "tests/engine/checker.h"
#include "tests/engine/recorder.h"
#include "tests/engine/web_files.h"

#include "core/busy.h"
#include "core/byte_stream.h"
#include "core/errors.h"
#include "core/names.h"
#include "core/recovery.h"
#include "core/text.h"
#include "file/document.h"
#include "file/web_reader.h"
#include "program/file_commands.h"
#include "report/output.h"
#include "report/reports.h"
#include "web/cell_ops.h"
#include "web/cell_text.h"
#include "web/cells.h"
#include "web/changed.h"
#include "web/index.h"
#include "web/options.h"
#include "web/trail.h"
#include "web/value.h"

#include <gtest/gtest.h>

// Starts the program before a test and checks everything behind it. A test that loses blocks on
// purpose says how many.
class EngineTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    uint32_t lost_blocks = 0;
};

using Names = std::vector<std::string>;
using Log = std::vector<std::string>;

// Makes a cell as a file does, without showing it; the cell list gets its item.
CellHandle make_cell(const char *name, const std::string &text = "");

// The log since the last call.
Log take_log();

// Names of the live cells in index order; of the trail and the forward ring, oldest first.
Names cell_names();
Names trail_names();
Names forward_names();

std::string current_name();

// The text of the live cell of that name.
std::string text_of(const char *name);

// A web to work in: cells alpha, bent, beta, gamma and home, delta deleted; the user is at beta,
// having come from home by way of alpha, with gamma ahead; unchanged. Beta has a text, a script and
// a value; bent was never visited. The log is empty.
void open_scene();

// All that a user can see of the web and of the way through it, a line an item.
Names visible_state();

// Allocates until this many blocks are free, and gives them back.
std::vector<BlockHandle> leave_free_blocks(uint32_t count);
void give_back(const std::vector<BlockHandle> &blocks);
