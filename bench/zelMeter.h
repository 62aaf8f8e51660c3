#pragma once

#include "zelWorkload.h"

#include <string>

/// Nanoseconds of one operation.
struct Figures {
    double library = 0;
    double baseline = 0; ///< 0: there is no such job.
};

/// The rows as benchmarks named "job/size/library" and "job/size/baseline". Each runs on a warm
/// heap, memory that the process has touched before, until so many operations have passed that the
/// clock is precise; a cold row is measured by a process of its own.
class Meter {
public:
    /// Registers the benchmarks. The program is this one's path.
    Meter(std::string program, const std::vector<Workload>& workloads);

    /// Runs the two benchmarks of a row once.
    static Figures measure(const Workload& workload, int size);

private:
    void add(const Workload& workload, int size, bool baseline);
    void prepare(const Workload& workload, int size);
    double measureSide(const Workload& workload, int size, bool baseline);
    double measureCold(const Workload& workload, int size, bool baseline) const;

    std::string m_program;
    const Workload* m_last = nullptr; ///< What was measured last, and may keep something.
    int m_lastSize = 0;
};

/// The whole work of a process that a meter starts: one run on a heap that nothing has used.
/// Nanoseconds of one operation.
double measureColdRun(Timing (*run)(int), int size);

/// "8 x 10000" where the size is levels x siblings.
std::string shownSize(int size);
