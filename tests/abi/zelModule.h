#pragma once

// Modules of code, as the hosts of these tests load them at run time.

#include <string>

#if defined(_WIN32)
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>
#define ZEL_TEST_EXPORT __declspec(dllexport)
#else
#include <dlfcn.h>
#define ZEL_TEST_EXPORT __attribute__((visibility("default")))
#endif

/// The module of that path, never unloaded. Null: it cannot be loaded.
inline void* loadModule(const char* path)
{
#if defined(_WIN32)
    return LoadLibraryA(path);
#else
    return dlopen(path, RTLD_NOW | RTLD_LOCAL);
#endif
}

/// The exported function of that name, null when there is none.
template <class Function>
Function* functionOf(void* module, const char* name)
{
#if defined(_WIN32)
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name)));
#else
    return reinterpret_cast<Function*>(dlsym(module, name));
#endif
}

/// Why the last of these calls gave null.
inline std::string whyNot()
{
#if defined(_WIN32)
    return "error " + std::to_string(GetLastError());
#else
    const char* const text = dlerror();
    return text ? text : "";
#endif
}
