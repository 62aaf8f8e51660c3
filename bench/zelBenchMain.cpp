// Runs every workload on the library and on the baseline, interleaved, and prints a table of the
// medians.

#include "zelBenchNetworks.h"
#include "zelWorkload.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <map>
#include <unistd.h>

namespace {

constexpr int kRepetitions = 9;

/// So many items are measured in one repetition at least.
constexpr double kItems = 20000;

void registerRuns(const Workload& workload, int size, const char* side, Timing (*run)(int))
{
    const std::string name = workload.name + "/" + std::to_string(size) + "/" + side;
    benchmark::RegisterBenchmark(name.c_str(),
                                 [run, size](benchmark::State& state) {
                                     Timing total;
                                     for (auto _ : state) {
                                         while (total.items < kItems) {
                                             const Timing timing = run(size);
                                             total.seconds += timing.seconds;
                                             total.items += timing.items;
                                         }
                                         state.SetIterationTime(total.seconds / total.items);
                                     }
                                 })
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(kRepetitions)
        ->Unit(benchmark::kNanosecond);
}

/// Collects the times of each run, in nanoseconds.
class Collector : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& /*context*/) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration)
                m_times[run.run_name.function_name].push_back(run.GetAdjustedRealTime());
        }
    }
    /// 0 when there was no such run.
    double median(const std::string& name)
    {
        std::vector<double>& times = m_times[name];
        if (times.empty())
            return 0;
        std::sort(times.begin(), times.end());
        return times[times.size() / 2];
    }

private:
    std::map<std::string, std::vector<double>> m_times;
};

void printRow(Collector& times, const Workload& workload, int size)
{
    const std::string name = workload.name + "/" + std::to_string(size) + "/";
    const double library = times.median(name + "library");
    const double plain = times.median(name + "baseline");
    if (library == 0)
        return;
    const std::string shown =
        size >= 1000000 ? std::to_string(size / 1000000) + " x " + std::to_string(size % 1000000)
                        : std::to_string(size);
    if (plain == 0)
        std::printf("| %s | %s | %.0f ns | | | %s |\n", workload.name.c_str(), shown.c_str(),
                    library, workload.goal);
    else
        std::printf("| %s | %s | %.0f ns | %.0f ns | %.1fx | %s |\n", workload.name.c_str(),
                    shown.c_str(), library, plain, library / plain, workload.goal);
}

double residentBytes()
{
    double pages = 0;
    double resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

/// The memory that a node with all inputs connected takes; run first, on an untouched heap.
template <class Network>
double bytesPerNode()
{
    constexpr int kCount = 100000;
    const double before = residentBytes();
    Network network(kCount);
    network.connectAll();
    return (residentBytes() - before) / kCount;
}

} // namespace

int main(int argc, char** argv)
{
    const double libraryBytes = bytesPerNode<LibraryNetwork>();
    std::vector<std::string> arguments(argv, argv + argc);
    arguments.emplace_back("--benchmark_enable_random_interleaving=true");
    std::vector<char*> pointers;
    pointers.reserve(arguments.size());
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    int count = static_cast<int>(pointers.size());
    benchmark::Initialize(&count, pointers.data());
    if (benchmark::ReportUnrecognizedArguments(count, pointers.data()))
        return 1;

    std::vector<Workload> workloads;
    for (auto* const group :
         {networkWorkloads, lookupWorkloads, fanOutWorkloads, editingWorkloads}) {
        for (Workload& workload : group())
            workloads.push_back(std::move(workload));
    }
    for (const Workload& workload : workloads) {
        for (const int size : workload.sizes) {
            registerRuns(workload, size, "library", workload.library);
            if (workload.baseline)
                registerRuns(workload, size, "baseline", workload.baseline);
        }
    }
    Collector times;
    benchmark::RunSpecifiedBenchmarks(&times);

    std::printf("| job | size | library | baseline | ratio | goal |\n|---|---|---|---|---|---|\n");
    for (const Workload& workload : workloads) {
        for (const int size : workload.sizes)
            printRow(times, workload, size);
    }
    std::printf("| memory of a node, 4 connections | 100000 | %.0f bytes | | | 1500 bytes |\n",
                libraryBytes);
    return 0;
}
