#include "tests/engine/engine_test.h"

#include "file/web_writer.h"

#include <algorithm>
#include <utility>

namespace {

// A file on a disk with so much room, or one that can be read so far.
struct File {
    std::string bytes;
    size_t room;
};

ssize_t write_to_file(void *cookie, const char *bytes, size_t size) {
    File *file = static_cast<File *>(cookie);
    const size_t taken = std::min(size, file->room - file->bytes.size());
    file->bytes.append(bytes, taken);
    return static_cast<ssize_t>(taken);
}

ssize_t read_from_file(void *cookie, char *buffer, size_t size) {
    File *file = static_cast<File *>(cookie);
    const size_t taken = file->bytes.copy(buffer, std::min(size, file->room));
    file->bytes.erase(0, taken);
    return taken > 0 ? static_cast<ssize_t>(taken) : -1;
}

Names ring_names(uint32_t (*entries)(CellHandle *)) {
    CellHandle cells[31];
    Names names(entries(cells));
    std::transform(cells, cells + names.size(), names.begin(), name_string);
    return names;
}

}  // namespace

static auto open_files() {
    return std::distance(fs::directory_iterator("/proc/self/fd"), {});
}

void EngineTest::SetUp() {
    start_program();
    files_before = open_files();
}

void EngineTest::TearDown() {
    EXPECT_EQ(check_engine(lost_blocks), "");
    EXPECT_EQ(check_cell_list(), "");
    EXPECT_EQ(open_files(), files_before);
}

CellHandle make_cell(const char *name, const std::string &text) {
    CellHandle cell = cell_create(index_root_address(), name);
    cell_replace_text(cell, text.data(), static_cast<uint32_t>(text.size()));
    insert_list_item(cell);
    return cell;
}

Log take_log() {
    return std::exchange(host().log, {});
}

uint32_t count(const Log &log, const std::string &start) {
    const auto begins = [&](const std::string &line) { return line.starts_with(start); };
    return static_cast<uint32_t>(std::count_if(log.begin(), log.end(), begins));
}

Names cell_names() {
    Names names;
    for (CellHandle cell : live_cells()) {
        names.push_back(name_string(cell));
    }
    return names;
}

Names trail_names() {
    return ring_names(trail_entries);
}

Names forward_names() {
    return ring_names(forward_entries);
}

int read_web(const std::string &bytes) {
    int code = parse_web(bytes);
    refresh_views();
    return code;
}

int parse_web(const std::string &bytes) {
    FILE *file = fmemopen(const_cast<char *>(bytes.data()), bytes.size(), "rb");
    int code = web_read(file);
    fclose(file);
    return code;
}

int read_web_then_fail(const std::string &bytes) {
    File cookie = {bytes, 100};
    FILE *file = fopencookie(&cookie, "rb", {read_from_file, nullptr, nullptr, nullptr});
    int code = web_read(file);
    fclose(file);
    refresh_views();
    return code;
}

std::string written_web(int *code, size_t room) {
    File cookie = {"", room};
    FILE *file = fopencookie(&cookie, "wb", {nullptr, write_to_file, nullptr, nullptr});
    int result = web_write(file);
    fclose(file);
    if (code != nullptr) {
        *code = result;
    }
    return cookie.bytes;
}

void open_scene() {
    make_cell("alpha", "gamma");
    make_cell("bent");
    CellHandle beta = make_cell("beta", "alpha and home, " + std::string(100, 'b'));
    cell_set_script(beta, text_from_cstring("script"));
    cell_set_value(beta, val_from_text(text_from_cstring("12")));
    make_cell("gamma");
    go_to_cell(make_cell("delta", "gone"));
    cell_set_script(current_cell(), text_from_cstring("gone"));
    cell_set_value(current_cell(), val_from_text(text_from_cstring("0")));
    host().ok_cancel = {true};
    delete_cell();
    trail_reset();
    refresh_current_view();
    for (const char *name : {"alpha", "beta", "gamma"}) {
        go_to_name(name);
    }
    back();
    set_web_changed(false);
    host().log.clear();
}

Names visible_state() {
    Names state = {"at " + current_name(), "pane " + host().pane.text,
                   web_changed() ? "changed" : "unchanged"};
    for (CellHandle c : live_cells()) {
        state.push_back("cell " + name_string(c) + ": " + text_string(cell_text(c)) + "|" +
                        text_string(cell_script(c)) + "|" +
                        (cell_value(c) != 0 ? text_string(val_text(cell_value(c))) : ""));
    }
    for (const std::string &name : trail_names()) {
        state.push_back("trail " + name);
    }
    for (const std::string &name : forward_names()) {
        state.push_back("forward " + name);
    }
    return state;
}

void give_back(const std::vector<BlockHandle> &blocks) {
    for (BlockHandle h : blocks) {
        block_free(h);
    }
}
