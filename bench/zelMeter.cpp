#include "zelMeter.h"

#include "zelHeap.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace {

/// So many operations are measured in one round at least.
constexpr double kItems = 20000;

/// More than the jobs of that size need at once: both networks, and names and ports at hand.
std::size_t heapFor(int size)
{
    const std::size_t nodes = static_cast<std::size_t>(std::max(1, size / kLevel)) *
                              static_cast<std::size_t>(size % kLevel);
    return (std::size_t{64} << 20) + nodes * 2500;
}

double nanoseconds(const Timing& timing)
{
    return timing.seconds / timing.items * 1e9;
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

double Meter::measureSide(const Workload& workload, int size, bool baseline) const
{
    if (workload.cold)
        return measureCold(workload, size, baseline);
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

Figures Meter::measure(const Workload& workload, int size)
{
    if (!workload.cold)
        prepare(workload, size);
    Figures figures;
    figures.library = measureSide(workload, size, false);
    if (workload.baseline)
        figures.baseline = measureSide(workload, size, true);
    return figures;
}

Figures Meter::best(const Workload& workload, int size, int rounds)
{
    Figures best = measure(workload, size);
    for (int round = 1; round < rounds; ++round) {
        const Figures figures = measure(workload, size);
        best.library = std::min(best.library, figures.library);
        best.baseline = std::min(best.baseline, figures.baseline);
    }
    return best;
}

double measureColdRun(Timing (*run)(int), int size)
{
    run(10); // The code is there already: what is cold is the memory.
    return nanoseconds(run(size));
}
