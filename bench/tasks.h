// The jobs that are measured, by name: the engine's, and those of its peers on the same bytes.
//
// A job is prepared once for a web file. Then each round is run(), which alone is measured, and
// clear(), which gives back what the round has made.
#pragma once

#include <cstdint>
#include <span>

struct Task {
    const char *name;
    const char *does;
    void (*prepare)(const char *path);
    void (*run)();
    void (*clear)();
    uint32_t (*result)();  // of the last round: cells read or written, or links found
};

// A task's name begins with what is done: "read", "save" or "links".
std::span<const Task> engine_tasks();
std::span<const Task> peer_tasks();

// Both, in this order; null for no such task.
const Task *find_task(const char *name);
