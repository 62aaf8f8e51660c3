#pragma once

#include <cstddef>

// The first touch of a page of memory is work of the operating system, which on some virtual
// machines takes fifty microseconds: it would be all that a clock sees. Jobs are therefore measured
// on memory that the process has used before.

/// Keeps what is freed in the process from now on, and large blocks in the same heap as small ones.
/// Does nothing where the allocator is not glibc's.
void keepFreedMemory();

/// Touches so many bytes, unless as many were touched before, and frees them. Needs
/// keepFreedMemory.
void warmHeap(std::size_t bytes);

/// Lets the allocator join the small blocks that were freed, so that each job finds the heap as the
/// one before it did.
void settleHeap();
