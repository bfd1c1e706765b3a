// rounds FOLDER GUIDE: times every task on every web with Google Benchmark, in one run.
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
    for (auto round : state) {
        task->run();
        state.PauseTiming();
        state.counters["result"] = task->result();
        task->clear();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<int64_t>(std::filesystem::file_size(web->path)) *
                            state.iterations());
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
                    ->Unit(benchmark::kMicrosecond)
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
