#pragma once

#if defined(_MSC_VER) && !defined(__clang__)
#include <intrin.h>
#endif

namespace ZEL {

// Hints only: they change nothing, and any address will do. Where there are none, nothing is done.

/// Asks for the line of memory that will be read soon.
inline void prefetchToRead(const void* address)
{
#if defined(__GNUC__) || defined(__clang__)
    __builtin_prefetch(address);
#elif defined(_M_X64) || defined(_M_IX86)
    _mm_prefetch(static_cast<const char*>(address), _MM_HINT_T0);
#elif defined(_M_ARM64)
    __prefetch(address);
#else
    (void)address;
#endif
}

/// Asks for the line of memory that will be written soon.
inline void prefetchToWrite(const void* address)
{
#if defined(__GNUC__) || defined(__clang__)
    __builtin_prefetch(address, 1);
#else
    prefetchToRead(address);
#endif
}

} // namespace ZEL
