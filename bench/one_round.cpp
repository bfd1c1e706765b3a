// one_round TASK WEB: one round of a task, for a tool that counts instructions. What counts is what
// happens within measured_round(), after a round that leaves behind whatever is made but once.
#include "bench/tasks.h"

#include <cstdio>

extern "C" [[gnu::noipa]] void measured_round(const Task *task) {
    task->run();
}

int main(int argc, char **argv) {
    const Task *task = argc == 3 ? find_task(argv[1]) : nullptr;
    if (task == nullptr) {
        fputs("usage: one_round TASK WEB\n", stderr);
        return 2;
    }
    task->prepare(argv[2]);
    task->run();
    task->clear();
    measured_round(task);
    printf("%u\n", task->result());
    return 0;
}
