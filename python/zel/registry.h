#pragma once

#include "zel.h"

#include <pybind11/pybind11.h>

namespace zelpython {

// What Python sees of the registry of runtimes. The registry keeps plain pointers for ever, also of
// runtimes that the plugins of C++ have deleted at Host::terminate: those are None here, and what
// Python held of them raises TypeError.

/// Tells Python of every Host::terminate, whoever calls it, before the plugins are told. Called
/// before anything that may give Python a runtime of the registry.
void watchRegistry();

// Lookups; null for a runtime that is gone.
int countRuntimes();
ZEL::Runtime* runtimeAt(int index);
ZEL::Runtime* runtimeNamed(const char* name);

/// A runtime of Python that was registered lives until the process ends.
void keepForRegistry(ZEL::Runtime& runtime);

/// Ends all plugins. Raises RuntimeError from an unregistration function, in a rebuild of
/// compounds, and when somebody goes on using a plugin's runtime.
void terminateRegistry();

/// A call of an unregistration function that is written in Python.
class Unregistration {
public:
    Unregistration();
    Unregistration(const Unregistration&) = delete;
    Unregistration& operator=(const Unregistration&) = delete;
    ~Unregistration();

    /// Raises RuntimeError within such a call.
    static void forbid(const char* reason);
};

} // namespace zelpython
