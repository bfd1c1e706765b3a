#include "bench/tasks.h"

#include <cstring>

const Task *find_task(const char *name) {
    for (std::span<const Task> tasks : {engine_tasks(), peer_tasks()}) {
        for (const Task &task : tasks) {
            if (strcmp(task.name, name) == 0) {
                return &task;
            }
        }
    }
    return nullptr;
}
