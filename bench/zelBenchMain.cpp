// Measures every row of the table of costs, or the rows that a program asks for one by one.

#include "zelHeap.h"
#include "zelMeter.h"
#include "zelWorkload.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

constexpr const char* kUsage =
    R"(usage: zelBench [--benchmark_filter=REGEX ...]
                           measures "job/size/library" and "job/size/baseline", as Google Benchmark
       zelBench --list     prints every row: job, size and goal, with tabs between
       zelBench --serve    reads rows, job and size with a tab between, and answers each with
                           the nanoseconds of the library and of the baseline (0: none)
       zelBench --cold JOB SIZE library|baseline
                           measures one run in this process, which has used no memory before
)";

std::vector<Workload> allWorkloads()
{
    std::vector<Workload> workloads;
    for (auto* const group :
         {networkWorkloads, collapseTenthWorkloads, tenNodesWorkloads, lookupWorkloads,
          renameWorkloads, fanOutWorkloads, editingWorkloads}) {
        for (Workload& workload : group())
            workloads.push_back(std::move(workload));
    }
    return workloads;
}

/// Null when there is no such row.
const Workload* findRow(const std::vector<Workload>& workloads, const std::string& job, int size)
{
    for (const Workload& workload : workloads) {
        for (const int known : workload.sizes) {
            if (workload.name == job && known == size)
                return &workload;
        }
    }
    return nullptr;
}

int printList(const std::vector<Workload>& workloads)
{
    for (const Workload& workload : workloads) {
        for (const int size : workload.sizes)
            std::printf("%s\t%d\t%s\t%s\n", workload.name.c_str(), size, shownSize(size).c_str(),
                        workload.goal);
    }
    return 0;
}

int serve(const std::vector<Workload>& workloads)
{
    std::string line;
    while (std::getline(std::cin, line)) {
        const std::size_t tab = line.find('\t');
        const Workload* const workload =
            tab == std::string::npos
                ? nullptr
                : findRow(workloads, line.substr(0, tab), std::atoi(line.c_str() + tab + 1));
        if (!workload) {
            std::fprintf(stderr, "zelBench: no such row: %s\n", line.c_str());
            return 1;
        }
        const Figures figures = Meter::measure(*workload, std::atoi(line.c_str() + tab + 1));
        std::printf("%.3f\t%.3f\n", figures.library, figures.baseline);
        std::fflush(stdout);
    }
    return 0;
}

int runCold(const std::vector<Workload>& workloads, char** arguments)
{
    const int size = std::atoi(arguments[1]);
    const Workload* const workload = findRow(workloads, arguments[0], size);
    const bool baseline = std::string(arguments[2]) == "baseline";
    if (!workload || (baseline && !workload->baseline))
        return 1;
    std::printf("%.3f\n", measureColdRun(baseline ? workload->baseline : workload->library, size));
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<Workload> workloads = allWorkloads();
    const std::string first = argc > 1 ? argv[1] : "";
    if (first == "--cold" && argc == 5)
        return runCold(workloads, argv + 2);
    if (first == "--list" && argc == 2)
        return printList(workloads);
    keepFreedMemory();
    const Meter meter(argv[0], workloads);
    if (first == "--serve" && argc == 2)
        return serve(workloads);
    benchmark::Initialize(&argc, argv);
    if (argc > 1) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
