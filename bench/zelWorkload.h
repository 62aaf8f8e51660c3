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
    const char* goal;
};

std::vector<Workload> networkWorkloads();
std::vector<Workload> lookupWorkloads();
std::vector<Workload> fanOutWorkloads();
std::vector<Workload> editingWorkloads();

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
