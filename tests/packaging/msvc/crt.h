// Included before everything by check.sh: what lets a compiler that is no GNU read the C headers of
// mingw-w64, and libc++ stand on them in place of Microsoft's own.
#pragma once
#pragma clang system_header

#include <_mingw.h>

// Written behind declarations, where Microsoft's forms of them are not allowed.
#undef __MINGW_NOTHROW
#define __MINGW_NOTHROW
#undef __MINGW_ATTRIB_NORETURN
#define __MINGW_ATTRIB_NORETURN __attribute__((__noreturn__))
#undef __MINGW_ATTRIB_DEPRECATED
#define __MINGW_ATTRIB_DEPRECATED
// Emptied for compilers that are no GNU; clang's own headers need it.
#undef __attribute__

#include <locale.h>
#include <stddef.h>

// libc++ asks for them.
extern "C" void* aligned_alloc(size_t alignment, size_t size);
extern "C" float _strtof_l(const char* text, char** end, _locale_t locale);
extern "C" long double _strtold_l(const char* text, char** end, _locale_t locale);
