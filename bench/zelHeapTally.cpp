#include "zelHeapTally.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <malloc.h>

// The functions here stand in for those of glibc, for the whole process, the shared library too.
// Each block is taken with room for one number more, at its end, which is the size asked for.

// The names are glibc's, those behind malloc and free.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)

namespace {

HeapTally g_tally;

constexpr std::size_t kNote = sizeof(std::size_t);

std::size_t& noteOf(void* block)
{
    return *reinterpret_cast<std::size_t*>(static_cast<char*>(block) + malloc_usable_size(block) -
                                           kNote);
}

long long takenFor(std::size_t size)
{
    return static_cast<long long>(std::max<std::size_t>(32, (size + 8 + 15) / 16 * 16));
}

void count(std::size_t size, int sign)
{
    g_tally.blocks += sign;
    g_tally.asked += sign * static_cast<long long>(size);
    g_tally.taken += sign * takenFor(size);
}

void* counted(void* block, std::size_t size)
{
    if (block) {
        noteOf(block) = size;
        count(size, 1);
    }
    return block;
}

} // namespace

HeapTally heapTally()
{
    return g_tally;
}

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): glibc's have reserved names.
extern "C" {

void* malloc(std::size_t size)
{
    return counted(__libc_malloc(size + kNote), size);
}

void* calloc(std::size_t number, std::size_t size)
{
    if (size != 0 && number > static_cast<std::size_t>(-1) / 2 / size) {
        errno = ENOMEM;
        return nullptr;
    }
    return counted(__libc_calloc(1, number * size + kNote), number * size);
}

void* realloc(void* block, std::size_t size)
{
    if (!block)
        return malloc(size);
    const std::size_t before = noteOf(block);
    void* const moved = __libc_realloc(block, size + kNote);
    if (moved)
        count(before, -1);
    return counted(moved, size);
}

void free(void* block)
{
    if (!block)
        return;
    count(noteOf(block), -1);
    __libc_free(block);
}

void* memalign(std::size_t alignment, std::size_t size)
{
    return counted(__libc_memalign(alignment, size + kNote), size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return memalign(alignment, size);
}

int posix_memalign(void** result, std::size_t alignment, std::size_t size)
{
    *result = memalign(alignment, size);
    return *result ? 0 : ENOMEM;
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
