// rounds FOLDER GUIDE: times every task on every web with Google Benchmark, in one run. Each
// repetition is one round, so that the least of them is one that nothing else interrupted.
#include "bench/tasks.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <filesystem>
#include <string>
#include <vector>

namespace {

struct Web {
    std::string name;
    std::string path;
};

// The lists of 2,400 cells do not fit into the arena, nor does anything but the first 256 of them
// have a number.
bool applies(const Task &task, const Web &web) {
    return std::string(task.name) != "links" || web.name != "many";
}

void time_task(benchmark::State &state, const Task *task, const Web *web) {
    task->prepare(web->path.c_str());
    task->run();
    task->clear();
    for (auto round : state) {
        task->run();
    }
    state.counters["result"] = task->result();
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(web->path));
    task->clear();
}

double least(const std::vector<double> &times) {
    return *std::min_element(times.begin(), times.end());
}

void register_tasks(std::span<const Task> tasks, const std::vector<Web> &webs) {
    for (const Web &web : webs) {
        for (const Task &task : tasks) {
            if (applies(task, web)) {
                benchmark::RegisterBenchmark((web.name + "/" + task.name).c_str(), time_task, &task,
                                             &web)
                    ->Iterations(1)
                    ->Unit(benchmark::kMicrosecond)
                    ->UseRealTime()
                    ->ComputeStatistics("min", least);
            }
        }
    }
}

}  // namespace

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    if (argc != 3) {
        fputs("usage: rounds [benchmark options] FOLDER GUIDE\n", stderr);
        return 2;
    }
    std::string folder = argv[1];
    const std::vector<Web> webs = {
        {"many", folder + "/many.qvx"}, {"long", folder + "/long.qvx"}, {"guide", argv[2]}};
    register_tasks(engine_tasks(), webs);
    register_tasks(peer_tasks(), webs);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
