#include "zelMeter.h"

#include "zelHeap.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace {

/// So many operations are measured at a time, at least.
constexpr double kItems = 20000;

constexpr double kNanosecondsPerSecond = 1e9;

/// More than the jobs of that size need at once: both networks, and names and ports at hand.
std::size_t heapFor(int size)
{
    const std::size_t nodes = static_cast<std::size_t>(std::max(1, size / kLevel)) *
                              static_cast<std::size_t>(size % kLevel);
    return (std::size_t{64} << 20) + nodes * 2500;
}

double nanoseconds(const Timing& timing)
{
    return timing.seconds / timing.items * kNanosecondsPerSecond;
}

std::string benchmarkName(const Workload& workload, int size, bool baseline)
{
    return workload.name + "/" + shownSize(size) + (baseline ? "/baseline" : "/library");
}

/// A pattern that only the text matches.
std::string patternOf(const std::string& text)
{
    std::string pattern = "^";
    for (const char letter : text) {
        const bool isPlain = std::isalnum(static_cast<unsigned char>(letter)) != 0;
        pattern += isPlain ? std::string(1, letter) : std::string("[") + letter + "]";
    }
    return pattern + "/";
}

/// Keeps the figure of the one benchmark that runs.
class Collector : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& /*context*/) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs)
            m_figure = run.GetAdjustedRealTime();
    }
    double figure() const { return m_figure; }

private:
    double m_figure = 0;
};

double runBenchmark(const std::string& name)
{
    Collector collector;
    // Behind the name stands what the library says of the kind of the clock.
    benchmark::RunSpecifiedBenchmarks(&collector, patternOf(name));
    return collector.figure();
}

} // namespace

void Meter::prepare(const Workload& workload, int size)
{
    if (m_last == &workload && m_lastSize == size)
        return;
    if (m_last && m_last->finish)
        m_last->finish();
    m_last = &workload;
    m_lastSize = size;
    warmHeap(heapFor(size));
}

double Meter::measureSide(const Workload& workload, int size, bool baseline)
{
    if (workload.cold)
        return measureCold(workload, size, baseline);
    prepare(workload, size);
    Timing total;
    while (total.items < kItems) {
        settleHeap();
        const Timing timing = (baseline ? workload.baseline : workload.library)(size);
        total.seconds += timing.seconds;
        total.items += timing.items;
    }
    return nanoseconds(total);
}

double Meter::measureCold(const Workload& workload, int size, bool baseline) const
{
    const std::string command = "'" + m_program + "' --cold '" + workload.name + "' " +
                                std::to_string(size) + (baseline ? " baseline" : " library");
    double figure = 0;
    std::FILE* const output = popen(command.c_str(), "r");
    const bool read = output && std::fscanf(output, "%lf", &figure) == 1;
    if (!output || pclose(output) != 0 || !read)
        throw std::runtime_error("no figure from: " + command);
    return figure;
}

Meter::Meter(std::string program, const std::vector<Workload>& workloads)
    : m_program(std::move(program))
{
    for (const Workload& workload : workloads) {
        for (const int size : workload.sizes) {
            add(workload, size, false);
            if (workload.baseline)
                add(workload, size, true);
        }
    }
}

void Meter::add(const Workload& workload, int size, bool baseline)
{
    const auto run = [this, &workload, size, baseline](benchmark::State& state) {
        for (auto _ : state)
            state.SetIterationTime(measureSide(workload, size, baseline) / kNanosecondsPerSecond);
    };
    benchmark::RegisterBenchmark(benchmarkName(workload, size, baseline).c_str(), run)
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(benchmark::kNanosecond);
}

Figures Meter::measure(const Workload& workload, int size)
{
    Figures figures;
    figures.library = runBenchmark(benchmarkName(workload, size, false));
    if (workload.baseline)
        figures.baseline = runBenchmark(benchmarkName(workload, size, true));
    return figures;
}

double measureColdRun(Timing (*run)(int), int size)
{
    run(10); // The code is there already: what is cold is the memory.
    return nanoseconds(run(size));
}

std::string shownSize(int size)
{
    if (size < kLevel)
        return std::to_string(size);
    return std::to_string(size / kLevel) + " x " + std::to_string(size % kLevel);
}
