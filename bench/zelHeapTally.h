#pragma once

#include <cstddef>

/// What the process has on its heap: exact, as every block is counted when it is taken and freed.
struct HeapTally {
    long long blocks = 0;
    long long asked = 0; ///< Bytes that were asked for.
    /// Bytes that glibc's allocator takes for them: 8 for itself, in steps of 16, at least 32.
    long long taken = 0;

    HeapTally operator-(const HeapTally& other) const
    {
        return {blocks - other.blocks, asked - other.asked, taken - other.taken};
    }
};

HeapTally heapTally();
