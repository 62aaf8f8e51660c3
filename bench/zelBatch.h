#pragma once

#include "zelWorkload.h"

#include <algorithm>
#include <memory>
#include <vector>

/// So many fixtures of that size are measured under one clock: a single small one would be over
/// before the clock could tell. Together they still fit into the nearer caches.
inline int batchOf(int count)
{
    return std::max(1, 320 / count);
}

/// Makes the fixtures from the size, then measures the job on each of them: so many items in one.
template <class Fixture, class Job>
Timing timeBatch(int size, double items, Job job)
{
    std::vector<std::unique_ptr<Fixture>> fixtures;
    for (int i = 0; i < batchOf(size); ++i)
        fixtures.push_back(std::make_unique<Fixture>(size));
    const StopWatch watch;
    for (const std::unique_ptr<Fixture>& fixture : fixtures)
        job(*fixture);
    return watch.stop(items * static_cast<double>(fixtures.size()));
}
