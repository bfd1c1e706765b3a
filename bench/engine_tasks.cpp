#include "bench/engine.h"
#include "bench/files.h"
#include "bench/tasks.h"
#include "web/cells.h"
#include "web/links.h"

namespace {

struct Engine {
    const char *path;
    bool started;
} engine;

void no_clear() {}

uint32_t count_cells() {
    uint32_t count = 0;
    for (CellHandle c = live_from(index_first(index_root())); c != 0;
         c = live_from(index_next(c))) {
        ++count;
    }
    return count;
}

void read_run() {
    FILE *file = open_or_exit(engine.path, "rb");
    engine_read(file);
    fclose(file);
}

void read_clear() {
    web_reset("home");
}

void read_prepare(const char *path) {
    engine.path = path;
    if (!engine.started) {
        engine_start();
        engine.started = true;
    }
    web_reset("home");
}

void prepare_with_web(const char *path) {
    read_prepare(path);
    read_run();
}

void save_run() {
    FILE *file = open_or_exit(k_sink, "wb");
    engine_save(file);
    fclose(file);
}

uint32_t count_links_of(CellHandle cell) {
    uint32_t count = 0;
    BlockHandle list = cell_out_pointers(cell);
    for (LinkEntry *e = link_list_first(list); e != nullptr && e->kind != k_link_end;
         e = link_list_next(list)) {
        ++count;
    }
    return count;
}

uint32_t count_links() {
    uint32_t count = 0;
    for (CellHandle c = live_from(index_first(index_root())); c != 0;
         c = live_from(index_next(c))) {
        count += count_links_of(c);
    }
    return count;
}

constexpr Task k_tasks[] = {
    {"read", "web_read: into blocks, indexed, numbered", read_prepare, read_run, read_clear,
     count_cells},
    {"save", "web_write", prepare_with_web, save_run, no_clear, count_cells},
    {"links", "links_build_all", prepare_with_web, links_build_all, links_drop_all, count_links},
};

}  // namespace

std::span<const Task> engine_tasks() {
    return k_tasks;
}
