#pragma once

// One translation unit of a host or plugin that is built otherwise would break the dynamic_cast by
// which a port knows its parent, or read the library's objects wrongly.
#if defined(__GNUC__)
#if !defined(__GXX_RTTI) && !defined(__cpp_rtti)
#error "libZEL needs run-time type information: compile without -fno-rtti."
#endif
#if __cplusplus < 201703L
#error "libZEL needs C++17 or newer: compile with -std=c++17."
#endif
#endif

/// Marks what the shared library exports; everything else is hidden.
#define ZEL_API __attribute__((visibility("default")))
