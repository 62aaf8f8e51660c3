#pragma once

// One translation unit of a host or plugin that is built otherwise would break the dynamic_cast by
// which a port knows its parent, or read the library's objects wrongly.
#if defined(_MSC_VER)
#if !defined(_CPPRTTI)
#error "libZEL needs run-time type information: compile with /GR."
#endif
#if !defined(_MSVC_LANG) || _MSVC_LANG < 201703L
#error "libZEL needs C++17 or newer: compile with /std:c++17."
#endif
#else
#if !defined(__GXX_RTTI) && !defined(__cpp_rtti)
#error "libZEL needs run-time type information: compile without -fno-rtti."
#endif
#if __cplusplus < 201703L
#error "libZEL needs C++17 or newer: compile with -std=c++17."
#endif
#endif

// ZEL_API marks what the shared library exports; everything else is hidden. ZEL_STATIC is defined
// for the static library and by its CMake target: there the marked names are what a host shows to
// its plugins, except on Windows, where a program shows none. ZEL_EXPORTS is defined while the
// library itself is built, ZEL_EXPORTS_LISTED where a list of names says then what is exported.
#if defined(_WIN32) && defined(ZEL_STATIC)
#define ZEL_API
#elif defined(_WIN32) && defined(ZEL_EXPORTS_LISTED)
#define ZEL_API
#elif defined(_WIN32) && defined(ZEL_EXPORTS)
#define ZEL_API __declspec(dllexport)
#elif defined(_WIN32)
#define ZEL_API __declspec(dllimport)
#else
#define ZEL_API __attribute__((visibility("default")))
#endif

// Where virtual tables hold something else than the plain addresses of functions, the same in all
// modules (signed pointers, relative tables, tables of other compilers, import thunks), an object
// does not show whether its class overrides getName. There a wrapper notes the class of what it is
// given, so that lists find names as quickly as elsewhere.
#if !defined(ZEL_NAMES_BY_TYPE)
#if !defined(__GNUC__) || defined(_WIN32) || defined(__ia64__)
#define ZEL_NAMES_BY_TYPE
#elif defined(__has_feature)
#if __has_feature(ptrauth_calls) || __has_feature(cxx_abi_relative_vtable)
#define ZEL_NAMES_BY_TYPE
#endif
#endif
#endif
