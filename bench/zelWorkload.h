#pragma once

#include <chrono>
#include <string>
#include <vector>

/// What one run measured.
struct Timing {
    double seconds = 0;
    double items = 0; ///< How many operations the seconds are for.
};

/// One measured job, done by the library and, where there is one, by the baseline.
struct Workload {
    std::string name;
    std::vector<int> sizes;
    Timing (*library)(int size);
    Timing (*baseline)(int size); ///< Null: the goal is an absolute time.
    /// "1.5x" of the baseline, "500 ns", "1.2 us", "flat", "as before", or "1.3x of 100000": of the
    /// same job of that size.
    const char* goal;
    void (*finish)() = nullptr; ///< Drops what the runs of a size keep. Null: they keep nothing.
    bool cold = false;          ///< Measured in a process of its own, which has used no memory yet.
};

std::vector<Workload> networkWorkloads();
std::vector<Workload> tenNodesWorkloads();
std::vector<Workload> lookupWorkloads();
std::vector<Workload> renameWorkloads();
std::vector<Workload> fanOutWorkloads();
std::vector<Workload> editingWorkloads();
std::vector<Workload> collapseTenthWorkloads();

/// Sizes from here on are levels x siblings: the levels are the multiples of it.
constexpr int kLevel = 10000000;

/// Measures the time between its construction and stop.
class StopWatch {
public:
    Timing stop(double items) const
    {
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - m_start;
        return {passed.count(), items};
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};
