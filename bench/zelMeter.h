#pragma once

#include "zelWorkload.h"

#include <string>

/// Nanoseconds of one operation.
struct Figures {
    double library = 0;
    double baseline = 0; ///< 0: there is no such job.
};

/// Measures rows, the library and the baseline in turn, on a warm heap: memory that the process has
/// touched before.
class Meter {
public:
    /// The program is this one's path: a cold row is measured by a process of its own.
    explicit Meter(std::string program) : m_program(std::move(program)) {}

    /// One round: each side runs until so many operations have passed that the clock is precise.
    Figures measure(const Workload& workload, int size);
    /// The lower figures of so many rounds.
    Figures best(const Workload& workload, int size, int rounds);

private:
    void prepare(const Workload& workload, int size);
    double measureSide(const Workload& workload, int size, bool baseline) const;
    double measureCold(const Workload& workload, int size, bool baseline) const;

    std::string m_program;
    const Workload* m_last = nullptr; ///< What was measured last, and may keep something.
    int m_lastSize = 0;
};

/// The whole work of a process that a meter starts: one run on a heap that nothing has used.
/// Nanoseconds of one operation.
double measureColdRun(Timing (*run)(int), int size);
