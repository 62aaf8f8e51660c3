#include "zelHeap.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <limits>
#ifdef __GLIBC__
#include <malloc.h>
#endif

void keepFreedMemory()
{
#ifdef __GLIBC__
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max()); // The end of the heap stays, too.
    mallopt(M_TOP_PAD, 64 << 20);                               // It grows by large steps.
    mallopt(M_MMAP_MAX, 0); // A mapping of its own would be returned, and be cold the next time.
#endif
}

void warmHeap(std::size_t bytes)
{
    constexpr std::size_t kPage = 4096;
    static std::size_t touched = 0;
    if (bytes <= touched)
        return;
    touched = bytes;
    auto* const block = static_cast<char*>(std::malloc(bytes));
    if (!block)
        return;
    benchmark::DoNotOptimize(block);
    for (std::size_t i = 0; i < bytes; i += kPage)
        block[i] = 1;
    benchmark::ClobberMemory();
    std::free(block);
}

void settleHeap()
{
    constexpr std::size_t kJoins = 1 << 20; // Freeing as much makes glibc join its small blocks.
    void* const block = std::malloc(kJoins);
    benchmark::DoNotOptimize(block);
    std::free(block);
}
