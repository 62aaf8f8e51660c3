#pragma once

// ZEL_MADE_EARLY(function); calls a function that gives a static object of its own, when the
// library is loaded. Where the library is a part of a program, that is before the program's static
// objects are made, which may use it, and so it goes after them. Where a compiler has no such
// order, the first call makes it.
#if defined(__GNUC__) && !defined(__APPLE__)
#define ZEL_MADE_EARLY(function)                                                                   \
    __attribute__((constructor(101))) void function##Early()                                       \
    {                                                                                              \
        function();                                                                                \
    }                                                                                              \
    static_assert(true)
#else
#define ZEL_MADE_EARLY(function) [[maybe_unused]] const auto& g_##function##Early = function()
#endif
